import QtQuick
import QtQuick.Templates as T
import Tessivo.Style

/** A short explanation beside the pointer, after it has rested for a moment. */
T.ToolTip {
    id: tip

    property bool above: false

    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: !parent ? 0 : above ? -implicitHeight - 4 : parent.height + 4
    margins: 6
    padding: 6
    horizontalPadding: 9
    implicitWidth: Math.min(480, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: Text {
        text: tip.text.slice(0, 1000)
        color: Colors.pvPaper
        font.family: Fonts.text
        font.pixelSize: Fonts.caption
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        maximumLineCount: 8
        elide: Text.ElideRight
    }
    background: Rectangle {
        radius: 4
        color: Colors.pvBlack3
        border.color: Colors.pvLine
    }
}
