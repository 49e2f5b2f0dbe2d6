import QtQuick
import Tessivo.Style

/** Two centred lines for states with nothing to play. */
Item {
    id: idle

    property string text: ""
    property string subtitle: ""

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 56, implicitWidth)
        spacing: 16

        PVText {
            text: idle.text
            size: 32
            weight: Font.Bold
            color: Colors.pvPaperDim
            wrapMode: Text.Wrap
            width: Math.min(implicitWidth, idle.width - 56)
            horizontalAlignment: Text.AlignHCenter
            anchors.horizontalCenter: parent.horizontalCenter
        }
        PVText {
            text: idle.subtitle
            size: 15
            color: Colors.pvPaperFaint
            anchors.horizontalCenter: parent.horizontalCenter
        }
    }
}
