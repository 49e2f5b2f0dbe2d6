import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** A display station: what it waits for, then the stage display of the admin that it follows. */
Item {
    id: root

    readonly property alias receiver: receiver
    readonly property bool searching: receiver.status === ReceiverViewModel.Searching

    signal changeMode

    ReceiverViewModel {
        id: receiver
    }

    NetworkStatusView {
        anchors.fill: parent
        visible: receiver.status !== ReceiverViewModel.Following
        systemImage: root.searching ? Icons.wifi : Icons.check
        text: root.searching ? "Recherche d'un admin sur le réseau…" : "Connecté à l'admin"
        detail: root.searching ? "Assure-toi que ce poste est bien branché sur le même réseau que l'ordinateur Admin." : "En attente des infos du show…"
        showsSpinner: true
        canChangeMode: root.searching
        onChangeMode: root.changeMode()
    }

    RemoteDisplayView {
        anchors.fill: parent
        visible: receiver.status === ReceiverViewModel.Following
        content: receiver.content
    }
}
