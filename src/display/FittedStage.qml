pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** The current song as large as it can be: title, time left, every guest with the equipment, and who
    comes next. */
Item {
    id: stage

    required property StageContent content

    FittedLayout {
        id: fitted

        content: stage.content
        room: Qt.size(stage.width, stage.height)
        fontFamily: Fonts.text
    }

    Item {
        width: stage.width / Math.max(fitted.scale, 0.01)
        height: stage.height / Math.max(fitted.scale, 0.01)
        scale: fitted.scale
        transformOrigin: Item.TopLeft

        Rectangle {
            id: card

            x: fitted.margin
            y: fitted.margin
            width: parent.width - 2 * fitted.margin
            height: parent.height - y - Math.max(fitted.nextHeight, fitted.gap)
            radius: 10
            color: Colors.withOpacity(Colors.pvRed, 0.06)
            border.width: 2.5
            border.color: Colors.pvRed

            Row {
                x: fitted.padding
                y: fitted.padding
                spacing: 7

                Rectangle {
                    width: 10
                    height: 10
                    radius: 5
                    color: Colors.pvRed
                    anchors.verticalCenter: parent.verticalCenter
                }
                PVText {
                    text: "EN COURS"
                    size: 13
                    weight: Font.Bold
                    color: Colors.pvRed
                    font.letterSpacing: 2
                }
            }
            PVText {
                id: title

                readonly property real end: y + height + fitted.gap

                x: fitted.padding
                y: fitted.padding + fitted.markerHeight
                width: time.x - x - fitted.gap
                height: fitted.titleHeight
                text: stage.content.current.title
                size: fitted.titleSize
                weight: Font.Bold
                wrapMode: Text.Wrap
                maximumLineCount: fitted.titleLines
                elide: Text.ElideRight
                fontSizeMode: Text.Fit
                minimumPixelSize: 24
                verticalAlignment: Text.AlignVCenter
                Accessible.role: Accessible.Heading
            }
            Rectangle {
                id: time

                x: card.width - fitted.padding - width
                y: fitted.padding
                width: stage.content.countdown ? Math.max(fitted.timeWidth, countdown.implicitWidth + 16) : 0
                height: 72
                radius: 8
                color: "transparent"
                // Red alone is grey to some eyes.
                border.width: stage.content.urgent ? 3 : 0
                border.color: Colors.pvRed

                PVReadout {
                    id: countdown

                    anchors.centerIn: parent
                    what: "Temps restant"
                    text: stage.content.countdown
                    size: 52
                    weight: Font.Bold
                    color: stage.content.urgent ? Colors.pvRed : Colors.pvPaper
                }
            }

            PVText {
                visible: stage.content.current.guests.length === 0
                anchors.horizontalCenter: parent.horizontalCenter
                y: title.end
                text: "Pas de guest sur ce morceau"
                size: 20
                font.italic: true
                color: Colors.pvPaperDim
            }
            Grid {
                id: guests

                x: fitted.padding
                y: title.end + Math.max(0, (card.height - title.end - fitted.padding - height) / 2)
                width: card.width - 2 * fitted.padding
                columns: fitted.columns
                columnSpacing: fitted.gap
                rowSpacing: fitted.guestGap

                Repeater {
                    model: stage.content.current.guests
                    delegate: FittedGuest {
                        plan: fitted
                        width: (guests.width - (fitted.columns - 1) * fitted.gap) / fitted.columns
                    }
                }
            }
        }

        FittedNextSong {
            visible: fitted.nextHeight > 0
            x: fitted.margin
            y: card.y + card.height + fitted.gap
            width: card.width
            height: parent.height - y
            song: stage.content.following
            plan: fitted
            urgent: stage.content.urgent
        }
    }
}
