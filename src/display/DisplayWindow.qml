import QtQuick
import Tessivo.Display
import Tessivo.Kit

/** The local stage display in its window. */
CrewWindow {
    title: "Tessivo — Affichage"
    minimumWidth: view.minimumWidth
    minimumHeight: view.minimumHeight
    width: minimumWidth
    height: minimumHeight

    DisplayView {
        id: view
        anchors.fill: parent
    }
}
