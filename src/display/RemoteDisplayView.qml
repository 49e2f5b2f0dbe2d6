import QtQuick
import Tessivo.Display
import Tessivo.Style

/** The stage display of a state that came over the network. What may no longer be the present says
    so, in a band over its lower edge. */
Item {
    id: view

    required property ReceiverViewModel receiver
    /** Whether it is only the last picture of an admin that is lost. */
    required property bool outdated

    signal changeMode

    StageView {
        id: stage

        anchors.fill: parent
        content: view.receiver.content
        source: "Affichage réseau"
        outdated: view.outdated
        covered: band.visible ? band.height : 0
    }

    PVText {
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        anchors.margins: 14
        visible: text !== "" && !band.visible
        text: view.receiver.clockFault ? "Horloge de ce poste\u00A0: " + view.receiver.clockFault : ""
        size: 11
        color: Colors.pvAmber
    }

    SilenceBand {
        id: band

        anchors.bottom: parent.bottom
        width: parent.width
        magnification: stage.magnification
        visible: view.outdated || view.receiver.silence !== ""
        silence: view.receiver.silence
        goesOnCounting: view.outdated && view.receiver.content.countdown !== ""
        canChangeMode: !view.outdated && view.receiver.adminIsMute
        onChangeMode: view.changeMode()
    }
}
