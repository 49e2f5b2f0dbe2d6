import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** A guest of a folded song: name, microphone, and volume when there is one. */
Rectangle {
    id: chip

    required property editedGuest guest
    property real maximumWidth: Infinity
    /** For the three texts. */
    readonly property real room: maximumWidth - 16 - 2 * parts.spacing

    implicitWidth: Math.min(parts.implicitWidth + 16, maximumWidth)
    implicitHeight: parts.implicitHeight + 6
    radius: 5
    color: Colors.withOpacity(Colors.pvRed, 0.08)

    Row {
        id: parts

        x: 8
        y: 3
        spacing: 4

        PVText {
            text: chip.guest.name || "(sans nom)"
            size: 12
            color: Colors.pvPaperDim
            width: Math.min(implicitWidth, chip.room * 0.5)
            elide: Text.ElideRight
        }
        PVText {
            visible: text !== ""
            text: chip.guest.mic
            size: 11
            color: Colors.pvAmber
            width: Math.min(implicitWidth, chip.room * 0.25)
            elide: Text.ElideRight
            anchors.verticalCenter: parent.verticalCenter
        }
        PVText {
            visible: text !== ""
            text: chip.guest.volume
            size: 11
            digits: true
            color: Colors.pvAmber
            width: Math.min(implicitWidth, chip.room * 0.25)
            elide: Text.ElideRight
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
