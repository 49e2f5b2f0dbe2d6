import QtQuick
import QtQuick.Layouts
import Tessivo.Style

/** Says that nothing was heard of the admin, whatever the reason, and for how long. */
Rectangle {
    id: band

    property real magnification: 1
    /** How long, in words; empty when it has just begun. */
    property string silence: ""
    /** Whether the countdown beside it is this computer's own doing. */
    property bool goesOnCounting: false
    property bool canChangeMode: false

    signal changeMode

    height: 36 * magnification
    color: Colors.pvAmber

    RowLayout {
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 24)
        spacing: 12 * band.magnification

        PVText {
            text: "Sans nouvelles de la régie" + (band.silence ? " depuis " + band.silence : "") + (band.goesOnCounting ? " · le décompte continue seul" : "")
            size: 16 * band.magnification
            weight: Font.Bold
            color: Colors.pvBlack
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        PVButton {
            visible: band.canChangeMode
            text: "Changer de mode"
            textSize: 13 * band.magnification
            // On amber an amber frame wouldn't tell that it has the keyboard.
            look: PVButton.Filled
            fill: Colors.pvBlack
            foreground: Colors.pvAmber
            onClicked: band.changeMode()
        }
    }
}
