import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** The levels of an input with several channels, and which one is decoded. */
RowLayout {
    spacing: 10
    visible: TimecodeViewModel.isCapturing && meters.channelCount > 1

    PVText {
        text: "Canal " + meters.decodedChannel
        size: Fonts.caption
        color: Colors.pvPaperDim
        Layout.minimumWidth: 52
    }
    ChannelMeters {
        id: meters

        implicitHeight: 20
        activeFocusOnTab: true
        Layout.fillWidth: true

        Accessible.role: Accessible.SpinBox
        Accessible.name: "Canal décodé : " + decodedChannel + " sur " + channelCount
        Accessible.focusable: true
        Accessible.onIncreaseAction: choose(1)
        Accessible.onDecreaseAction: choose(-1)
        Keys.onUpPressed: choose(1)
        Keys.onDownPressed: choose(-1)

        Rectangle {
            visible: meters.activeFocus
            anchors.fill: parent
            anchors.margins: -3
            color: "transparent"
            radius: 3
            border.width: 1
            border.color: Colors.pvAmber
        }
    }
}
