import QtQuick
import Tessivo.Display
import Tessivo.Style
import Tessivo.Ui

/** The admin's computer: makes sure that it is the only one, then shows the operator's screens. */
FocusScope {
    id: root

    readonly property bool refused: network.status === AdminNetwork.Conflict

    signal changeMode

    AdminNetwork {
        id: network
    }

    NetworkStatusView {
        anchors.fill: parent
        visible: network.status !== AdminNetwork.Broadcasting
        systemImage: root.refused ? Icons.alert : Icons.wifi
        text: root.refused ? "Un admin est déjà actif sur ce réseau" : "Vérification du réseau…"
        detail: network.conflict
        showsSpinner: !root.refused
        accentColor: root.refused ? Colors.pvAmber : Colors.pvPaperDim
        canChangeMode: root.refused
        onChangeMode: root.changeMode()
    }

    Loader {
        anchors.fill: parent
        active: network.status === AdminNetwork.Broadcasting
        focus: true
        sourceComponent: ContentView {
            focus: true
        }
    }
}
