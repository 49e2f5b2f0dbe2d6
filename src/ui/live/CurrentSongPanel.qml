pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** The song being played, with the time left and its guests. */
Rectangle {
    id: panel

    property songInfo song
    property int songCount: 0
    property string countdown: ""
    property bool urgent: false

    /** Draws the title and the guests as FittedColumn does; the line above them stays as it is. */
    function fitInto(available: real, least: real): bool {
        return body.fitInto(available - (height - body.height), least);
    }

    height: header.height + 10 + body.height + 36
    radius: 10
    color: Colors.pvRedDim
    border.width: 1
    border.color: Colors.pvRed

    Item {
        id: header

        x: 18
        y: 18
        width: panel.width - 36
        height: Math.max(place.height, timeLeft.height)

        Row {
            id: place

            spacing: 14
            anchors.verticalCenter: parent.verticalCenter

            PVText {
                text: "● En cours — morceau " + panel.song.position + "/" + panel.songCount
                size: 11
                weight: Font.Bold
                color: Colors.pvRed
                anchors.verticalCenter: parent.verticalCenter
            }
            PVText {
                visible: text !== ""
                text: panel.song.timecode
                size: 11
                digits: true
                color: Colors.pvAmber
                anchors.verticalCenter: parent.verticalCenter
            }
        }
        // Red alone is grey to some eyes, and on the card's red to all.
        Rectangle {
            visible: panel.urgent
            anchors.fill: timeLeft
            anchors.margins: -4
            radius: 5
            color: Colors.pvBlack
            border.width: 2
            border.color: Colors.pvRed
        }
        PVReadout {
            id: timeLeft

            what: "Temps restant"
            text: panel.countdown
            size: 18
            weight: Font.Bold
            color: panel.urgent ? Colors.pvRed : Colors.pvPaperDim
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    FittedColumn {
        id: body

        x: header.x
        y: header.y + header.height + 10
        width: header.width
        spacing: 10

        PVText {
            width: parent.width
            text: panel.song.title
            size: 38
            weight: Font.Bold
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
        }

        PVText {
            visible: panel.song.guests.length === 0
            text: "Pas de guest sur ce morceau"
            size: Fonts.subheadline
            color: Colors.pvPaperFaint
        }

        Flow {
            visible: panel.song.guests.length > 0
            width: parent.width
            spacing: 14

            Repeater {
                model: panel.song.guests
                delegate: Column {
                    id: guest

                    required property guestInfo modelData

                    spacing: 4
                    rightPadding: 14

                    PVText {
                        text: guest.modelData.name || "(sans nom)"
                        size: 16
                        weight: Font.DemiBold
                        width: Math.min(implicitWidth, body.rowWidth)
                        elide: Text.ElideRight
                    }
                    Row {
                        spacing: 12

                        TechLabel {
                            text: "MIC " + guest.modelData.mic
                        }
                        TechLabel {
                            text: "IEM " + guest.modelData.iem
                        }
                        TechLabel {
                            visible: guest.modelData.volume !== ""
                            text: "VOL " + guest.modelData.volume
                        }
                    }
                }
            }
        }
    }

    component TechLabel: PVText {
        size: 11
        weight: Font.DemiBold
        color: Colors.pvAmber
        width: Math.min(implicitWidth, body.rowWidth / 3 - 12)
        elide: Text.ElideRight
    }
}
