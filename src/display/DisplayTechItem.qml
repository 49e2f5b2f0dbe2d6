import QtQuick
import Tessivo.Style

/** A small label over its value, "—" when there is none. */
Column {
    id: item

    required property string label
    required property string value
    property real maximumWidth: 600

    spacing: 2

    PVText {
        text: item.label
        size: 10
        weight: Font.DemiBold
        color: Colors.pvPaperFaint
        font.letterSpacing: 1
        anchors.horizontalCenter: parent.horizontalCenter
    }
    PVText {
        text: item.value || "—"
        size: 16
        weight: Font.Bold
        color: Colors.pvAmber
        width: Math.min(implicitWidth, item.maximumWidth)
        elide: Text.ElideRight
        anchors.horizontalCenter: parent.horizontalCenter
    }
}
