pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessivo.Display
import Tessivo.Style

/** A coming song: a click goes to it. The one about to start is announced. */
T.AbstractButton {
    id: button

    required property songInfo song
    required property int index
    property bool announced: false

    focusPolicy: Qt.TabFocus
    implicitHeight: content.implicitHeight + topPadding + bottomPadding
    horizontalPadding: 14
    verticalPadding: 10
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: song.title
    Accessible.description: "Aller à ce morceau"
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    contentItem: Item {
        implicitHeight: Math.max(content.implicitHeight, 20)

        Column {
            id: content

            width: parent.width - go.width - 16
            spacing: 3

            Row {
                spacing: 12

                PVText {
                    id: title

                    text: button.song.title
                    size: button.announced ? 22 : 15
                    weight: button.announced ? Font.Bold : Font.Medium
                    color: button.announced ? Colors.pvAmber : Colors.pvPaper
                    width: Math.min(implicitWidth, content.width - timecode.width - 12)
                    elide: Text.ElideRight

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

                    text: button.song.timecode
                    size: 10
                    digits: true
                    color: Colors.pvAmber
                    anchors.baseline: title.baseline
                }
            }
            Repeater {
                model: button.song.guests
                delegate: PVText {
                    required property guestInfo modelData

                    text: modelData.operatorLine
                    size: Fonts.smallCaption
                    color: Colors.pvPaperFaint
                    width: content.width
                    elide: Text.ElideRight
                }
            }
        }
        PVText {
            id: go

            text: "Aller à ce morceau →"
            size: Fonts.smallCaption
            color: button.hovered || button.visualFocus ? Colors.pvPaperDim : Colors.pvPaperFaint
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    background: Rectangle {
        radius: 6
        color: button.announced ? Colors.withOpacity(Colors.pvAmber, 0.1)
                                : button.down || button.hovered ? Colors.pvBlack3 : Colors.pvBlack2
        border.width: button.announced ? 2 : 1
        border.color: button.announced || button.visualFocus ? Colors.pvAmber : Colors.pvLine

        Behavior on color {
            ColorAnimation {
                duration: 300
                easing.type: Easing.InOutQuad
            }
        }
    }
}
