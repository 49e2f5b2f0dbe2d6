import QtQuick
import QtQuick.Templates as T
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** A coming song: a click goes to it. The one about to start is announced. */
T.AbstractButton {
    id: button

    required property songInfo song
    required property int index
    property bool announced: false
    /** How far the screen has scrolled by itself. */
    property real shownFrom: 0

    focusPolicy: Qt.TabFocus
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 14
    verticalPadding: 10
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: song.title || "Morceau sans titre"
    Accessible.description: "Aller à ce morceau"
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    contentItem: NextSongSummary {
        song: button.song
        announced: button.announced
        lively: button.hovered || button.activeFocus
    }

    AimGuard {
        aim: button.y - button.shownFrom
    }

    background: Rectangle {
        radius: 6
        color: button.down || button.hovered ? Colors.pvBlack3 : Colors.pvBlack
        border.width: button.announced ? 2 : 1
        border.color: button.announced ? Colors.pvAmber : Colors.pvLine

        Behavior on border.color {
            ColorAnimation {
                duration: 300
                easing.type: Easing.InOutQuad
            }
        }
        Behavior on border.width {
            NumberAnimation {
                duration: 300
                easing.type: Easing.InOutQuad
            }
        }

        Fill {
            color: Colors.pvBlack2
            opacity: button.announced || button.down || button.hovered ? 0 : 1
        }
        Fill {
            color: Colors.pvAmber
            opacity: button.announced ? 0.1 : 0
        }
        // Inside the frame of the announced song, which has the same colour.
        Rectangle {
            visible: button.activeFocus
            anchors.fill: parent
            anchors.margins: 3
            radius: 4
            color: "transparent"
            border.width: 1
            border.color: Colors.pvAmber
        }
    }

    component Fill: Rectangle {
        anchors.fill: parent
        anchors.margins: 1
        radius: 5

        Behavior on opacity {
            NumberAnimation {
                duration: 300
                easing.type: Easing.InOutQuad
            }
        }
    }
}
