pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** What is said of a coming song: its title, its timecode and its guests. */
Item {
    id: summary

    required property songInfo song
    property bool announced: false
    property bool lively: false

    implicitHeight: Math.max(content.implicitHeight, 20)

    Column {
        id: content

        width: parent.width - go.width - 16
        spacing: 3

        Row {
            spacing: 12

            PVText {
                id: title

                text: summary.song.title
                size: summary.announced ? 22 : 15
                weight: summary.announced ? Font.Bold : Font.Medium
                color: summary.announced ? Colors.pvAmber : Colors.pvPaper
                width: Math.min(implicitWidth, content.width - (timecode.visible ? timecode.width + 12 : 0))
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignLeft  // whichever way its letters run

                Behavior on size {
                    NumberAnimation {
                        duration: 300
                        easing.type: Easing.InOutQuad
                    }
                }
                Behavior on color {
                    ColorAnimation {
                        duration: 300
                        easing.type: Easing.InOutQuad
                    }
                }
            }
            PVText {
                id: timecode

                visible: text !== ""
                text: summary.song.timecode
                size: 10
                digits: true
                color: Colors.pvAmber
                anchors.baseline: title.baseline
            }
        }
        Repeater {
            model: summary.song.guests
            delegate: PVText {
                required property guestInfo modelData

                text: modelData.operatorLine
                size: Fonts.smallCaption
                color: Colors.pvPaperFaint
                width: content.width
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignLeft
            }
        }
    }
    PVText {
        id: go

        text: "Aller à ce morceau →"
        size: Fonts.smallCaption
        color: summary.lively ? Colors.pvPaperDim : Colors.pvPaperFaint
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
    }
}
