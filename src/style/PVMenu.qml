pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** A menu whose commands stand with their shortcuts beside them. */
Menu {
    id: menu

    width: 240

    delegate: MenuItem {
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

    background: Rectangle {
        color: Colors.pvBlack3
        radius: 6
        border.color: Colors.pvLine
    }
}
