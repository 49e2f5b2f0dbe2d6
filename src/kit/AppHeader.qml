import QtQuick
import Tessivo.Style

/** The program's sign, on the screens that come before a show. */
Column {
    spacing: 6

    Icon {
        text: Icons.setlist
        size: 44
        color: Colors.pvRed
        anchors.horizontalCenter: parent.horizontalCenter
    }
    PVText {
        text: "Tessivo"
        size: 28
        weight: Font.Bold
        anchors.horizontalCenter: parent.horizontalCenter
    }
}
