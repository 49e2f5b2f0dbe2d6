import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** Says that the live screen is locked, and opens it when its button or Ctrl+L is held for a second. */
Rectangle {
    id: bar

    color: Colors.pvBlack3
    implicitHeight: row.implicitHeight + 12

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
        PVHoldButton {
            text: "Maintenir pour ouvrir (Ctrl+L)"
            // Space goes on to the next song, whatever Tab has reached.
            focusPolicy: Qt.NoFocus
            heldElsewhere: LockKey.holding
            onHeld: ShellViewModel.locked = false
        }
    }
}
