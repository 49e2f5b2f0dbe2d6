import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** The file commands, each with its shortcut beside it. */
PVMenu {
    title: "Fichier"

    Action {
        text: "Save"
        shortcut: "Ctrl+S"
        enabled: Desk.activeShowId !== ""
        onTriggered: Desk.saveCurrentShow()
    }
    Action {
        text: "Save As..."
        shortcut: "Ctrl+Shift+S"
        enabled: Desk.activeShowId !== ""
        onTriggered: Desk.saveCurrentShowAs()
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
        onTriggered: Desk.openShow()
    }
}
