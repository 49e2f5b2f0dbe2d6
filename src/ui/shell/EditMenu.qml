import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** Takes back what was done to the shows, and makes it again; each command names what. */
PVMenu {
    id: menu

    function command(verb: string, edit: string): string {
        return edit === "" ? verb : (verb + "\u00A0: " + edit).replace(/&/g, "&&");
    }

    title: "É&dition"
    width: 420

    Action {
        text: menu.command("Annuler", UndoViewModel.undoable)
        shortcut: "Ctrl+Z"
        enabled: UndoViewModel.undoable !== "" && !ShellViewModel.locked
        onTriggered: UndoViewModel.undo()
    }
    Action {
        text: menu.command("Rétablir", UndoViewModel.redoable)
        shortcut: "Ctrl+Shift+Z"
        enabled: UndoViewModel.redoable !== "" && !ShellViewModel.locked
        onTriggered: UndoViewModel.redo()
    }
}
