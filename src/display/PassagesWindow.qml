import QtQuick
import Tessivo.Display
import Tessivo.Kit

/** Who has which microphone when, for whoever hands them out. */
CrewWindow {
    id: window

    property PassagesContent content: LocalPassagesViewModel.content

    title: "Tessivo — Passages"
    minimumWidth: 480
    minimumHeight: 320
    width: 1100
    height: 700

    Item {
        width: window.width / zoom.factor
        height: window.height / zoom.factor
        scale: zoom.factor
        transformOrigin: Item.TopLeft

        PassagesView {
            anchors.fill: parent
            focus: true
            content: window.content
        }
    }
    Zoom {
        id: zoom
        anchors.fill: parent
        view: "passages"
    }
}
