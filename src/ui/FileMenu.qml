pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** The file commands, each with its shortcut beside it. */
Menu {
    id: menu

    title: "Fichier"
    width: 240
    delegate: entry

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

    background: Rectangle {
        color: Colors.pvBlack3
        radius: 6
        border.color: Colors.pvLine
    }

    Component {
        id: entry

        MenuItem {
            id: item

            implicitHeight: 32
            opacity: enabled ? 1 : 0.4
            Accessible.name: item.text

            // Only spells the keys in the platform's way.
            Shortcut {
                id: nativeKeys
                enabled: false
                sequence: item.action?.shortcut ?? ""
            }

            contentItem: Item {
                PVText {
                    text: item.text
                    size: 13
                    anchors.verticalCenter: parent.verticalCenter
                    anchors.left: parent.left
                    anchors.leftMargin: 6
                    Accessible.ignored: true
                }
                PVText {
                    text: item.action?.shortcut ? nativeKeys.nativeText : ""
                    size: Fonts.caption
                    color: Colors.pvPaperDim
                    anchors.verticalCenter: parent.verticalCenter
                    anchors.right: parent.right
                    anchors.rightMargin: 6
                    Accessible.ignored: true
                }
            }
            background: Rectangle {
                color: item.highlighted ? Colors.pvLine : "transparent"
                radius: 4
            }
        }
    }
}
