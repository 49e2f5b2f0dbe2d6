import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** The level of the decoded channel, filled from the bottom. */
Rectangle {
    id: meter

    /** From 0 to 1. */
    property real fill: 0
    property bool lively: false

    implicitWidth: 6
    implicitHeight: 20
    radius: 2
    color: Colors.pvLine

    Accessible.role: Accessible.ProgressBar
    Accessible.name: "Niveau d'entrée"

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: parent.height * meter.fill
        radius: 2
        color: meter.lively ? Colors.pvGreen : Colors.withOpacity(Colors.pvAmber, 0.5)
    }
}
