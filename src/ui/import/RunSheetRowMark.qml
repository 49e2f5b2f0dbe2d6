import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** Beside a row of the sheet: lit when the row is the one that it names, else offered. */
AbstractButton {
    id: mark

    required property bool isLit
    required property bool isOffered
    property color fill: Colors.pvAmber
    // Of what is drawn alone: a button that can't be seen at all isn't there for assistive tools.
    readonly property real shade: isLit ? 1 : hovered ? 0.9 : isOffered ? 0.5 : 0

    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    implicitHeight: 18

    contentItem: PVText {
        text: mark.text
        opacity: mark.shade
        size: 10
        weight: Font.DemiBold
        color: mark.isLit ? Colors.pvBlack : Colors.pvPaperDim
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Rectangle {
        opacity: mark.shade
        radius: 4
        color: mark.isLit ? mark.fill : Colors.pvLine
    }
}
