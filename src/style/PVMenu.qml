pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessivo.Style

/** A menu whose commands stand with their shortcuts beside them. */
Menu {
    id: menu

    width: 240

    delegate: MenuItem {
        id: item

        /** An & is doubled in `text`, where a single one makes a keyboard shortcut. */
        readonly property string label: text.replace(/&&/g, "&")

        implicitHeight: 32
        opacity: enabled ? 1 : 0.4
        Accessible.name: item.label

        // Only spells the keys in the platform's way.
        Shortcut {
            id: nativeKeys
            enabled: false
            sequence: item.action?.shortcut ?? ""
        }

        contentItem: RowLayout {
            spacing: 12

            PVText {
                text: item.label
                size: 13
                elide: Text.ElideRight
                Accessible.ignored: true
                Layout.fillWidth: true
                Layout.leftMargin: item.checkable ? 22 : 6
            }
            PVText {
                text: item.action?.shortcut ? nativeKeys.nativeText : ""
                size: Fonts.caption
                color: Colors.pvPaperDim
                Accessible.ignored: true
                Layout.rightMargin: 6
            }
        }
        indicator: Icon {
            visible: item.checked
            text: Icons.check
            size: 14
            color: Colors.pvAmber
            x: 8
            anchors.verticalCenter: parent.verticalCenter
        }
        background: Rectangle {
            color: item.highlighted ? Colors.pvLine : "transparent"
            border.width: item.highlighted ? 1 : 0
            border.color: Colors.pvAmber
            radius: 4
        }
    }

    background: Rectangle {
        color: Colors.pvBlack3
        radius: 6
        border.color: Colors.pvLine
    }
}
