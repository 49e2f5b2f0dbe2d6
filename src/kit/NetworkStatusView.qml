import QtQuick
import Tessivo.Style

/** What a computer shows while it looks for the others: a symbol or a spinner over a few lines. */
Rectangle {
    id: view

    property string systemImage: ""
    property string text: ""
    property string detail: ""
    /** What keeps this from getting on, in amber; empty for nothing. */
    property string trouble: ""
    property bool showsSpinner: false
    property color accentColor: Colors.pvPaperDim
    /** Whether the view offers to choose another launch mode. */
    property bool canChangeMode: false

    /** Where its lines begin and end. */
    readonly property real linesTop: lines.y
    readonly property real linesBottom: lines.y + lines.height

    signal changeMode

    color: Colors.pvBlack

    Column {
        id: lines

        anchors.centerIn: parent
        width: parent.width - 80
        spacing: 14

        PVSpinner {
            visible: view.showsSpinner
            anchors.horizontalCenter: parent.horizontalCenter
        }
        Icon {
            visible: !view.showsSpinner
            text: view.systemImage
            size: 28
            color: view.accentColor
            anchors.horizontalCenter: parent.horizontalCenter
        }
        PVText {
            text: view.text
            size: 14
            weight: Font.Medium
            width: parent.width
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        PVText {
            visible: text !== ""
            text: view.detail
            size: Fonts.caption
            color: Colors.pvPaperFaint
            width: parent.width
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        PVText {
            visible: text !== ""
            text: view.trouble
            size: 14
            weight: Font.DemiBold
            color: Colors.pvAmber
            width: parent.width
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        PVButton {
            visible: view.canChangeMode
            text: "Changer de mode"
            look: PVButton.Plain
            foreground: Colors.pvRed
            anchors.horizontalCenter: parent.horizontalCenter
            onClicked: view.changeMode()
        }
    }
}
