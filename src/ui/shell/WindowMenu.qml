import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** What can be done with the window that the menu stands in, and what is read beside it. */
PVMenu {
    id: menu

    signal fullScreenToggled
    signal passagesRequested

    title: "Fe&nêtre"

    Action {
        text: "Plein écran"
        shortcut: "F11"
        onTriggered: menu.fullScreenToggled()
    }
    Action {
        text: "Passages"
        shortcut: "Ctrl+P"
        onTriggered: menu.passagesRequested()
    }
    Action {
        text: "Ouvrir le journal"
        enabled: !ShellViewModel.locked
        onTriggered: ShellViewModel.openJournal()
    }
}
