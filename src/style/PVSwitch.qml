import QtQuick
import QtQuick.Templates as T
import Tessivo.Style

/** A labelled switch. Reached with Tab, toggled with Return or a click. */
T.Switch {
    id: control

    focusPolicy: Qt.TabFocus
    implicitWidth: implicitContentWidth + 8 + indicator.width
    implicitHeight: Math.max(implicitContentHeight, indicator.height)
    hoverEnabled: true

    Accessible.name: control.text
    // Left to itself, an assistive tool would turn what is seen, and nobody would hear of it.
    Accessible.onPressAction: flip()
    Accessible.onToggleAction: flip()
    Keys.onReturnPressed: flip()
    Keys.onEnterPressed: flip()

    function flip() {
        toggle();
        toggled();
    }

    contentItem: PVText {
        text: control.text
        size: Fonts.caption
        color: Colors.pvPaperDim
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    // Around all of it: amber can't be told from red.
    leftInset: -6
    rightInset: -6
    topInset: -4
    bottomInset: -4
    background: Rectangle {
        visible: control.activeFocus
        color: "transparent"
        radius: 5
        border.width: 1
        border.color: Colors.pvAmber
    }

    indicator: Rectangle {
        x: control.width - width
        anchors.verticalCenter: control.verticalCenter
        width: 34
        height: 18
        radius: 9
        color: control.checked ? Colors.pvRed : Colors.pvBlack3
        border.width: 1
        border.color: control.checked ? Colors.pvRed : Colors.outline

        Rectangle {
            x: control.checked ? parent.width - width - 2 : 2
            y: 2
            width: 14
            height: 14
            radius: 7
            color: control.checked ? Colors.pvPaper : Colors.pvPaperDim

            Behavior on x {
                NumberAnimation {
                    duration: 100
                }
            }
        }
    }
}
