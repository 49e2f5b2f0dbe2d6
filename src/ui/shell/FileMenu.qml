import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** The file commands, each with its shortcut beside it. */
PVMenu {
    id: menu

    /** Of PaperViewModel.Form. */
    signal paperRequested(int form)

    title: "&Fichier"

    Action {
        text: "Save"
        shortcut: "Ctrl+S"
        enabled: ShellViewModel.activeShowId !== "" && !ShellViewModel.locked
        onTriggered: ShellViewModel.saveCurrentShow()
    }
    Action {
        text: "Save As..."
        shortcut: "Ctrl+Shift+S"
        enabled: ShellViewModel.activeShowId !== "" && !ShellViewModel.locked
        onTriggered: ShellViewModel.saveCurrentShowAs()
    }
    MenuSeparator {
        contentItem: Rectangle {
            implicitHeight: 1
            color: Colors.pvLine
        }
    }
    Action {
        text: "Open..."
        shortcut: "Ctrl+O"
        enabled: !ShellViewModel.locked
        onTriggered: ShellViewModel.openShow()
    }
    MenuSeparator {
        contentItem: Rectangle {
            implicitHeight: 1
            color: Colors.pvLine
        }
    }
    Action {
        text: "Imprimer…"
        enabled: ShellViewModel.activeShowId !== "" && !ShellViewModel.locked
        onTriggered: menu.paperRequested(PaperViewModel.Print)
    }
    Action {
        text: "Exporter en PDF…"
        enabled: ShellViewModel.activeShowId !== "" && !ShellViewModel.locked
        onTriggered: menu.paperRequested(PaperViewModel.Pdf)
    }
    Action {
        text: "Exporter en CSV…"
        enabled: ShellViewModel.activeShowId !== "" && !ShellViewModel.locked
        onTriggered: menu.paperRequested(PaperViewModel.Csv)
    }
}
