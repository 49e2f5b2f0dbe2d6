pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Display
import Tessivo.Style

/** The song being played: the time left, the title, and a card per guest. */
Rectangle {
    id: card

    property songInfo song
    property string countdown: ""
    property bool urgent: false

    readonly property alias guestsOnOneLine: guests.onOneLine

    /// Brings the height up to date at once rather than before the next frame.
    function layOut() {
        guests.forceLayout();
        content.forceLayout();
    }

    height: content.height + 40
    radius: 10
    color: Colors.withOpacity(Colors.pvRed, 0.06)
    border.width: 2.5
    border.color: Colors.pvRed

    Column {
        id: content

        x: 20
        y: 20
        width: card.width - 40
        spacing: 12

        Item {
            width: parent.width
            height: Math.max(marker.height, timeLeft.height)

            Row {
                id: marker

                spacing: 10
                anchors.verticalCenter: parent.verticalCenter

                Rectangle {
                    width: 12
                    height: 12
                    radius: 6
                    color: Colors.pvRed
                    anchors.verticalCenter: parent.verticalCenter
                }
                PVText {
                    text: "EN COURS"
                    size: 14
                    weight: Font.Bold
                    color: Colors.pvRed
                    font.letterSpacing: 2
                    anchors.verticalCenter: parent.verticalCenter
                }
            }
            PVText {
                id: timeLeft

                text: card.countdown
                size: 26
                weight: Font.Bold
                digits: true
                color: card.urgent ? Colors.pvRed : Colors.pvPaperDim
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
            }
        }

        PVText {
            width: parent.width
            text: card.song.title
            size: 48
            weight: Font.Bold
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            horizontalAlignment: Text.AlignHCenter
        }

        PVText {
            visible: card.song.guests.length === 0
            text: "Pas de guest sur ce morceau"
            size: 16
            font.italic: true
            color: Colors.pvPaperFaint
            anchors.horizontalCenter: parent.horizontalCenter
        }

        // Side by side; when they don't all fit on one line, the line is full and breaks.
        Flow {
            id: guests

            visible: card.song.guests.length > 0
            width: Math.min(content.width, onOneLine)
            spacing: 12
            anchors.horizontalCenter: parent.horizontalCenter

            readonly property real onOneLine: {
                let total = -spacing;
                for (let i = 0; i < repeater.count; ++i) {
                    total += (repeater.itemAt(i)?.width ?? 0) + spacing;
                }
                return Math.max(0, total);
            }

            Repeater {
                id: repeater

                model: card.song.guests
                delegate: GuestCard {
                    maximumWidth: content.width
                }
            }
        }
    }
}
