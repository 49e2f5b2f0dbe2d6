import QtQuick
import QtQuick.Templates as T
import Tessivo.Style

/** A button that acts when it is held for a second: nobody does that by accident. */
T.AbstractButton {
    id: button

    /** Whether something else, such as a key, holds it. */
    property bool heldElsewhere: false

    /** Of the second, from 0 to 1. */
    property real progress: 0
    readonly property bool isHeld: visible && (pressed || heldElsewhere)

    signal held

    focusPolicy: Qt.NoFocus
    implicitWidth: implicitContentWidth + 28
    implicitHeight: implicitContentHeight + 14
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    // An assistive tool can't hold, and doesn't press by accident.
    Accessible.onPressAction: button.held()

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
        onFinished: button.held()
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
        border.color: Colors.pvLine

        Rectangle {
            width: parent.width * button.progress
            height: parent.height
            radius: parent.radius
            color: Colors.withOpacity(Colors.pvAmber, 0.35)
        }
    }
}
