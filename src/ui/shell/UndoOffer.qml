import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Says what was just removed, for a while, and takes it back. */
Row {
    visible: UndoViewModel.removal !== "" && !ShellViewModel.locked
    spacing: 4

    PVText {
        text: UndoViewModel.removal
        size: Fonts.caption
        color: Colors.pvPaperDim
        width: Math.min(implicitWidth, 360)
        elide: Text.ElideRight
        anchors.verticalCenter: parent.verticalCenter
    }
    PVButton {
        text: "Annuler"
        look: PVButton.Plain
        foreground: Colors.pvAmber
        anchors.verticalCenter: parent.verticalCenter
        onClicked: UndoViewModel.undo()
    }
}
