import QtQuick
import QtQuick.Templates as T
import Tessivo.Style

/** A button that acts when it is held for a second, with the mouse, or with Space or Return once Tab
    has brought the keyboard there: nobody does that by accident. */
T.AbstractButton {
    id: button

    /** Whether something else, such as a key, holds it. */
    property bool heldElsewhere: false

    /** Of the second, from 0 to 1. */
    property real progress: 0
    readonly property bool isHeld: visible && (pressed || heldByKey || heldElsewhere)
    /** By Space or Return, when it has the keyboard. */
    property bool heldByKey: false

    signal held

    focusPolicy: Qt.TabFocus
    implicitWidth: implicitContentWidth + 28
    implicitHeight: implicitContentHeight + 14
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    // An assistive tool can't hold, and doesn't press by accident.
    Accessible.onPressAction: button.held()

    Keys.onPressed: event => {
        event.accepted = [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter].includes(event.key);
        if (event.accepted) {
            releasing.stop();
            heldByKey = true;
        }
    }
    Keys.onReleased: event => {
        event.accepted = heldByKey;
        releasing.restart();
    }
    onActiveFocusChanged: heldByKey = false

    // A held key repeats as releases that a press follows at once. It acts when it is let go, or its
    // repeats would answer what is asked next.
    Timer {
        id: releasing

        interval: 50
        onTriggered: {
            const isOver = button.heldByKey && button.progress === 1;
            button.heldByKey = false;
            if (isOver) {
                button.held();
            }
        }
    }

    onIsHeldChanged: {
        if (isHeld) {
            filling.start();
        } else {
            filling.stop();
            progress = 0;
        }
    }

    NumberAnimation {
        id: filling

        target: button
        property: "progress"
        from: 0
        to: 1
        duration: 1000
        onFinished: {
            if (!button.heldByKey) {
                button.held();
            }
        }
    }

    contentItem: PVText {
        text: button.text
        size: Fonts.caption
        weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: 5
        color: button.hovered ? Colors.pvLine : "transparent"
        border.width: 1
        border.color: button.activeFocus ? Colors.pvAmber : Colors.pvLine

        Rectangle {
            width: parent.width * button.progress
            height: parent.height
            radius: parent.radius
            color: Colors.withOpacity(Colors.pvAmber, 0.35)
        }
    }
}
