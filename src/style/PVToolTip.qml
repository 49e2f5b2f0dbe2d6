import QtQuick
import QtQuick.Templates as T
import Tessivo.Style

/** A short explanation beside the pointer, after it has rested for a moment. */
T.ToolTip {
    id: tip

    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: parent ? parent.height + 4 : 0
    delay: 600
    margins: 6
    padding: 6
    horizontalPadding: 9
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: Text {
        text: tip.text
        color: Colors.pvPaper
        font.family: Fonts.text
        font.pixelSize: Fonts.caption
        textFormat: Text.PlainText
    }
    background: Rectangle {
        radius: 4
        color: Colors.pvBlack3
        border.color: Colors.pvLine
    }
}
