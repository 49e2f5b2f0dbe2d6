import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessivo.Style
import Tessivo.Ui

/** Says that the live screen is locked, and opens it when its button or Ctrl+L is held for a second:
    nobody does that by accident. */
Rectangle {
    id: bar

    readonly property bool held: visible && (button.pressed || LockKey.holding)

    /** Of the second, from 0 to 1. */
    property real progress: 0

    color: Colors.pvBlack3
    implicitHeight: row.implicitHeight + 12

    onHeldChanged: {
        if (held) {
            opening.start();
        } else {
            opening.stop();
            progress = 0;
        }
    }

    NumberAnimation {
        id: opening

        target: bar
        property: "progress"
        from: 0
        to: 1
        duration: 1000
        onFinished: ShellViewModel.locked = false
    }

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 20
        anchors.rightMargin: 12
        spacing: 10

        Icon {
            text: Icons.lock
            size: 16
            color: Colors.pvAmber
        }
        PVText {
            text: "Vue live verrouillée"
            size: 13
            weight: Font.DemiBold
            color: Colors.pvAmber
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        T.AbstractButton {
            id: button

            focusPolicy: Qt.NoFocus
            implicitWidth: implicitContentWidth + 28
            implicitHeight: implicitContentHeight + 14
            text: "Maintenir pour ouvrir (Ctrl+L)"
            hoverEnabled: true

            Accessible.role: Accessible.Button
            Accessible.name: text
            // An assistive tool can't hold, and doesn't press by accident.
            Accessible.onPressAction: ShellViewModel.locked = false

            contentItem: PVText {
                text: button.text
                size: Fonts.caption
                weight: Font.DemiBold
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: true
            }
            background: Rectangle {
                radius: 5
                color: button.hovered ? Colors.pvLine : "transparent"
                border.width: 1
                border.color: Colors.pvLine

                Rectangle {
                    width: parent.width * bar.progress
                    height: parent.height
                    radius: parent.radius
                    color: Colors.withOpacity(Colors.pvAmber, 0.35)
                }
            }
        }
    }
}
