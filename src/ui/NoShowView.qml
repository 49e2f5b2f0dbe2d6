import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** What the operator sees before a show is open. */
Item {
    Column {
        anchors.centerIn: parent
        spacing: 18

        Icon {
            text: Icons.setlist
            size: 56
            color: Colors.pvLine
            anchors.horizontalCenter: parent.horizontalCenter
        }
        PVText {
            text: "Aucun show ouvert"
            size: 22
            weight: Font.Bold
            color: Colors.pvPaperDim
            anchors.horizontalCenter: parent.horizontalCenter
        }
        PVButton {
            text: "Ouvrir un show…"
            glyph: Icons.setlist
            anchors.horizontalCenter: parent.horizontalCenter
            onClicked: Desk.openShow()
        }
    }
}
