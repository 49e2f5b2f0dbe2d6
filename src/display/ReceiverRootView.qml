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
    signal takenOver

    function takeOver(): void {
        receiver.prepareTakeOver();
        takenOver();
    }

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

    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        y: status.linesBottom + 24
        visible: root.searching && receiver.hasPicture
        spacing: 6

        PVHoldButton {
            text: "Reprendre la conduite ici"
            anchors.horizontalCenter: parent.horizontalCenter
            onHeld: {
                if (receiver.hasOtherVersion()) {
                    replacing.open();
                } else {
                    root.takeOver();
                }
            }
        }
        PVText {
            text: "Maintenir une seconde\u00A0: ce poste devient l'admin, au même morceau."
            size: Fonts.caption
            color: Colors.pvPaperFaint
            anchors.horizontalCenter: parent.horizontalCenter
        }
    }

    PVDialog {
        id: replacing

        title: "Reprendre la conduite ?"
        message: "Ce poste a une autre version de ce show. Celle de la régie prend sa place\u00A0; le menu Édition la rend."
        action: "Reprendre"
        onAccepted: {
            if (receiver.hasPicture) {
                root.takeOver();
            }
        }
    }
}
