import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** Beside a row of the sheet: lit when the row is the one that it names, else offered. */
AbstractButton {
    id: mark

    required property bool isLit
    required property bool isOffered
    property color fill: Colors.pvAmber

    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    implicitHeight: 18
    opacity: isLit ? 1 : hovered ? 0.9 : isOffered ? 0.5 : 0

    contentItem: PVText {
        text: mark.text
        size: 10
        weight: Font.DemiBold
        color: mark.isLit ? Colors.pvBlack : Colors.pvPaperDim
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: 4
        color: mark.isLit ? mark.fill : Colors.pvLine
    }
}
