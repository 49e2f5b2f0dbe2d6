import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** A display station: what it waits for, then the stage display of the admin that it follows. */
Item {
    id: root

    readonly property alias receiver: receiver
    readonly property bool searching: receiver.status === ReceiverViewModel.Searching
    readonly property bool following: receiver.status === ReceiverViewModel.Following

    signal changeMode

    ReceiverViewModel {
        id: receiver
    }

    NetworkStatusView {
        id: status

        anchors.fill: parent
        visible: !root.following
        systemImage: root.searching ? Icons.wifi : Icons.check
        text: root.searching ? "Recherche d'un admin sur le réseau…" : "Connecté à l'admin"
        detail: root.searching ? "Assure-toi que ce poste est bien branché sur le même réseau que l'ordinateur Admin." : "En attente des infos du show…"
        trouble: receiver.responderIsSilent ? "Le réseau de découverte ne répond pas" : ""
        showsSpinner: true
        canChangeMode: root.searching || receiver.adminIsMute
        onChangeMode: root.changeMode()
    }

    // Of an admin that is lost the last picture stays, in the room that the status leaves it.
    RemoteDisplayView {
        width: parent.width
        height: root.following ? parent.height : status.linesTop - 16
        visible: receiver.hasPicture
        receiver: receiver
        outdated: !root.following
        onChangeMode: root.changeMode()
    }
}
