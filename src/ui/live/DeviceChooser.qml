pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Chooses the audio input. The list is what the last refresh found. */
PVComboBox {
    id: chooser

    model: TimecodeViewModel.devices
    currentIndex: TimecodeViewModel.selectedDeviceRow
    displayText: TimecodeViewModel.selectedDeviceName
    popupWidth: Math.max(width, 380)
    Accessible.name: "Entrée audio"

    delegate: PVComboEntry {
        required property inputDeviceInfo device

        label: device.name
        current: index === chooser.currentIndex
    }

    onActivated: row => {
        TimecodeViewModel.chooseDevice(row);
        currentIndex = Qt.binding(() => TimecodeViewModel.selectedDeviceRow);
    }
}
