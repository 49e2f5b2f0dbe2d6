pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** The song being played: the time left, the title, and a card per guest. */
Rectangle {
    id: card

    property songInfo song
    property string countdown: ""
    property bool urgent: false

    readonly property bool isReduced: body.drawnScale < 1
    readonly property alias guestsOnOneLine: guests.onOneLine

    /** Draws the title and the guests as FittedColumn does; the line above them stays as it is. */
    function fitInto(available: real, least: real): bool {
        return body.fitInto(available - (height - body.height), least);
    }

    height: header.height + 12 + body.height + 40
    radius: 10
    color: Colors.withOpacity(Colors.pvRed, 0.06)
    border.width: 2.5
    border.color: Colors.pvRed

    Item {
        id: header

        x: 20
        y: 20
        width: card.width - 40
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
        // Red alone is grey to some eyes.
        Rectangle {
            visible: card.urgent
            anchors.fill: timeLeft
            anchors.margins: -5
            radius: 6
            color: "transparent"
            border.width: 2
            border.color: Colors.pvRed
        }
        PVReadout {
            id: timeLeft

            what: "Temps restant"
            text: card.countdown
            size: 26
            weight: Font.Bold
            color: card.urgent ? Colors.pvRed : Colors.pvPaperDim
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    OneByOne {
        id: making

        places: repeater
        eachFrame: 10
    }

    FittedColumn {
        id: body

        x: 20
        y: header.y + header.height + 12
        width: header.width
        spacing: 12

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

        // Side by side, on as many lines as it takes.
        Flow {
            id: guests

            visible: card.song.guests.length > 0
            width: Math.min(body.rowWidth, widestLine)
            spacing: 12
            anchors.horizontalCenter: parent.horizontalCenter

            readonly property real onOneLine: {
                let total = -spacing;
                for (let i = 0; i < repeater.count; ++i) {
                    total += (repeater.itemAt(i)?.width ?? 0) + spacing;
                }
                return Math.max(0, total);
            }
            /** As the cards break into lines, so that the lines as a whole stand in the middle. */
            readonly property real widestLine: {
                let widest = 0;
                let line = 0;
                for (let i = 0; i < repeater.count; ++i) {
                    const width = repeater.itemAt(i)?.width ?? 0;
                    line = line > 0 && line + spacing + width <= body.rowWidth ? line + spacing + width : width;
                    widest = Math.max(widest, line);
                }
                return widest;
            }

            Repeater {
                id: repeater

                model: card.song.guests
                onItemAdded: making.start()
                delegate: GuestPlace {
                    maximumWidth: body.rowWidth
                    // Drawn smaller, a thinner line would vanish here and there.
                    lineWidth: 1.5 / body.drawnScale
                }
            }
        }
    }
}
