pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Chooses the audio input. The list is what the last refresh found. */
PVComboBox {
    id: chooser

    model: Timecode.devices
    currentIndex: Timecode.selectedDeviceRow
    displayText: Timecode.selectedDeviceName
    popupWidth: Math.max(width, 380)
    emptyText: "Aucune entrée : actualise la liste."
    Accessible.name: "Entrée audio"

    delegate: PVComboEntry {
        required property inputDeviceInfo device

        label: device.name
        current: index === chooser.currentIndex
    }

    onActivated: row => {
        Timecode.chooseDevice(row);
        currentIndex = Qt.binding(() => Timecode.selectedDeviceRow);
    }
}
