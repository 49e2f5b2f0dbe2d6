import QtQuick
import QtQuick.Templates as T
import Tessivo.Style

/** A quiet outlined button: an icon, a text or both. Reached with Tab; a click leaves the keyboard
    where it was, and Return presses it. */
T.Button {
    id: button

    property string glyph: ""
    property color foreground: Colors.pvPaperDim

    focusPolicy: Qt.TabFocus
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 12
    verticalPadding: 7
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: button.text
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    contentItem: Row {
        spacing: 7

        Icon {
            visible: button.glyph !== ""
            text: button.glyph
            color: button.foreground
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            visible: text !== ""
            text: button.text
            color: button.foreground
            font.family: Fonts.text
            font.pixelSize: Fonts.caption
            font.weight: Font.DemiBold
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    background: Rectangle {
        radius: 5
        color: button.down ? Colors.pvLine : button.hovered ? Colors.pvBlack3 : "transparent"
        border.width: 1
        border.color: button.visualFocus ? Colors.pvAmber : Colors.pvLine
    }
}
