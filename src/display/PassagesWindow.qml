import QtQuick
import Tessivo.Display
import Tessivo.Kit

/** Who has which microphone when, for whoever hands them out. */
CrewWindow {
    id: window

    property PassagesContent content: LocalPassagesViewModel.content
    /** How long nothing was heard of the admin whose passages these are, in words. */
    property string silence: ""

    title: "Tessivo — Passages"
    minimumWidth: 480
    minimumHeight: 320
    width: 1100
    height: 700

    Item {
        width: window.width / zoom.factor
        height: (window.height - (band.visible ? band.height : 0)) / zoom.factor
        scale: zoom.factor
        transformOrigin: Item.TopLeft

        PassagesView {
            anchors.fill: parent
            focus: true
            content: window.content
        }
    }
    SilenceBand {
        id: band

        anchors.bottom: parent.bottom
        width: parent.width
        visible: silence !== ""
        silence: window.silence
    }
    Zoom {
        id: zoom
        anchors.fill: parent
        view: "passages"
    }
}
