pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** Chooses the audio input. The list is what the last refresh found. */
ComboBox {
    id: chooser

    model: Timecode.devices
    currentIndex: Timecode.selectedDeviceRow
    displayText: Timecode.selectedDeviceName
    focusPolicy: Qt.TabFocus
    implicitHeight: 30
    leftPadding: 10
    rightPadding: 30

    Accessible.role: Accessible.ComboBox
    Accessible.name: "Entrée audio"

    onActivated: row => {
        Timecode.chooseDevice(row);
        currentIndex = Qt.binding(() => Timecode.selectedDeviceRow);
    }

    contentItem: PVText {
        text: chooser.displayText
        size: 13
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
    indicator: Icon {
        text: Icons.chevronDown
        x: chooser.width - width - 8
        height: chooser.height
    }
    background: Rectangle {
        radius: 5
        color: chooser.down || chooser.hovered ? Colors.pvLine : Colors.pvBlack3
        border.width: 1
        border.color: chooser.visualFocus ? Colors.pvAmber : Colors.pvLine
    }

    delegate: ItemDelegate {
        id: entry

        required property inputDeviceInfo device
        required property int index

        width: ListView.view.width
        height: 32
        text: device.name
        highlighted: chooser.highlightedIndex === index
        Accessible.name: device.name

        contentItem: PVText {
            text: entry.text
            size: 13
            color: entry.index === 0 ? Colors.pvPaperDim : Colors.pvPaper
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
        background: Rectangle {
            radius: 4
            color: entry.highlighted ? Colors.pvLine : "transparent"
        }
    }

    popup: Popup {
        y: -height - 4
        width: Math.max(chooser.width, 380)
        height: Math.min(contentItem.implicitHeight + 8, 400)
        padding: 4

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: chooser.popup.visible ? chooser.delegateModel : null
            currentIndex: chooser.highlightedIndex
            ScrollIndicator.vertical: ScrollIndicator {}
        }
        background: Rectangle {
            radius: 6
            color: Colors.pvBlack3
            border.color: Colors.pvLine
        }
    }
}
