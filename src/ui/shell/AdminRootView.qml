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
        visible: content.item === null
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
        id: content

        readonly property bool leads: network.status === AdminNetworkViewModel.Broadcasting

        anchors.fill: parent
        focus: true
        onLeadsChanged: opening.start()
    }

    // The responder is first told what to advertise, which takes a few calls to and fro: making the
    // screens holds the program for far longer, and stations are searching.
    Timer {
        id: opening

        interval: 50
        onTriggered: content.setSource("ContentView.qml", {
            focus: true,
            firstTab: network.goesOn ? EditorView.Live : EditorView.Setlist
        })
    }
}
