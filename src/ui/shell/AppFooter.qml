import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** The credit line, under the notice of a newer version when there is one. */
Column {
    spacing: 10

    PVButton {
        visible: ShellViewModel.updateAvailable
        text: "Mise à jour disponible"
        glyph: Icons.update
        look: PVButton.Plain
        foreground: Colors.pvRed
        anchors.horizontalCenter: parent.horizontalCenter
        onClicked: ShellViewModel.checkForUpdates()
    }
    PVText {
        text: "Tessivo, la conduite des shows en direct · " + Qt.application.version
        size: 10
        color: Colors.pvPaperFaint
        anchors.horizontalCenter: parent.horizontalCenter
    }
}
