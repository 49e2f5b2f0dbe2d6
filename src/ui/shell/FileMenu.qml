import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** The file commands, each with its shortcut beside it. */
PVMenu {
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
}
