pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** The next song: its title, and as many of its guests with their microphones as have room. */
Rectangle {
    id: next

    required property songInfo song
    required property FittedLayout plan
    property bool urgent: false

    readonly property int more: song.guests.length - plan.nextGuests

    radius: 8
    color: Colors.withOpacity(Colors.pvAmber, urgent ? 0.12 : 0.06)
    border.width: 2
    border.color: Colors.pvAmber

    Column {
        x: next.plan.padding
        y: next.plan.padding
        width: parent.width - 2 * next.plan.padding

        PVText {
            height: next.plan.nextCaptionHeight
            text: "À SUIVRE"
            size: 12
            weight: Font.Bold
            color: Colors.pvAmber
            font.letterSpacing: 2
        }
        PVText {
            width: parent.width
            height: next.plan.nextTitleHeight
            text: next.song.position + "  " + next.song.title
            size: 26
            weight: Font.Bold
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
            horizontalAlignment: Text.AlignLeft
        }
        Flow {
            width: parent.width

            Repeater {
                model: next.song.guests
                delegate: Row {
                    id: guest

                    required property guestInfo modelData
                    required property int index

                    visible: index < next.plan.nextGuests
                    height: next.plan.nextGuestHeight  // whatever the script
                    spacing: next.plan.nextGuestGap
                    rightPadding: next.plan.nextGuestSpacing

                    PVText {
                        text: guest.modelData.name || "—"
                        size: next.plan.nextSize
                        weight: Font.DemiBold
                        width: Math.min(implicitWidth, next.plan.longestName)
                        elide: Text.ElideRight
                    }
                    PVText {
                        text: guest.modelData.mic || "—"
                        size: next.plan.nextSize
                        weight: Font.DemiBold
                        color: Colors.pvAmber
                        width: Math.min(implicitWidth, next.plan.longestLabel)
                        elide: Text.ElideRight
                    }
                }
            }
            PVText {
                visible: next.more > 0
                text: "+" + next.more
                size: next.plan.nextSize
                weight: Font.DemiBold
                color: Colors.pvPaperDim
            }
        }
    }
}
