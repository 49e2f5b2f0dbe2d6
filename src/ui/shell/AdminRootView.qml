import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** The admin's computer: makes sure that it is the only one, then shows the operator's screens. */
FocusScope {
    id: root

    readonly property alias network: network
    readonly property bool refused: network.status === AdminNetworkViewModel.Conflict

    signal changeMode

    AdminNetworkViewModel {
        id: network
    }

    NetworkStatusView {
        anchors.fill: parent
        visible: network.status !== AdminNetworkViewModel.Broadcasting
        systemImage: root.refused ? Icons.alert : Icons.wifi
        text: root.refused ? "Un admin est déjà actif sur ce réseau" : "Vérification du réseau…"
        detail: network.conflict
        trouble: network.trouble
        showsSpinner: !root.refused
        accentColor: root.refused ? Colors.pvAmber : Colors.pvPaperDim
        canChangeMode: root.refused
        onChangeMode: root.changeMode()
    }

    Loader {
        readonly property bool leads: network.status === AdminNetworkViewModel.Broadcasting

        anchors.fill: parent
        focus: true
        onLeadsChanged: setSource("ContentView.qml", {
            focus: true,
            firstTab: network.goesOn ? EditorView.Live : EditorView.Setlist
        })
    }
}
