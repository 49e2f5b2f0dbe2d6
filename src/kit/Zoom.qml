import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Kit
import Tessivo.Style

/** How large a window's content is drawn: Ctrl with +, − or the wheel, two fingers and a menu under
    the right button change it, Ctrl+0 takes it back. Each screen keeps its own. Lies over that
    content, and lets everything else through. */
Item {
    id: zoom

    /** What is zoomed, under which that is kept. */
    required property string view
    /** Whether there is a size at which all that matters fits; Ctrl+F asks for it. */
    property bool canFit: false
    /** 0.5 to 5; 1 while it fits. */
    readonly property real factor: fits ? 1 : chosen
    readonly property bool fits: canFit && chosen === 0

    property real chosen: 1
    readonly property string screenName: Screen.name

    function choose(factor: real): void {
        chosen = factor === 0 ? 0 : Math.max(0.5, Math.min(5, factor));
        ScreenZooms.keep(view, screenName, chosen);
    }
    function step(by: int): void {
        // Eight steps double.
        choose(Math.pow(2, (Math.round(8 * Math.log2(factor)) + by) / 8));
    }

    onScreenNameChanged: chosen = ScreenZooms.zoom(view, screenName)
    Component.onCompleted: chosen = ScreenZooms.zoom(view, screenName)

    WheelHandler {
        acceptedModifiers: Qt.ControlModifier
        // A touchpad turns by a fraction at a time.
        property real turned: 0
        onWheel: event => {
            turned += event.angleDelta.y / 120;
            const steps = Math.trunc(turned);
            turned -= steps;
            if (steps !== 0) {
                zoom.step(steps);
            }
        }
    }
    PinchHandler {
        id: pinch

        property real before: 1

        target: null
        onActiveChanged: before = zoom.factor
        onActiveScaleChanged: {
            if (active) {
                zoom.choose(before * activeScale);
            }
        }
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: menu.popup()
    }

    PVMenu {
        id: menu

        Action {
            text: "Agrandir"
            shortcut: "Ctrl++"
            onTriggered: zoom.step(1)
        }
        Action {
            text: "Réduire"
            shortcut: "Ctrl+-"
            onTriggered: zoom.step(-1)
        }
        Action {
            text: "Taille normale"
            shortcut: "Ctrl+0"
            onTriggered: zoom.choose(1)
        }
        Action {
            text: "Ajuster"
            enabled: zoom.canFit
            shortcut: "Ctrl+F"
            onTriggered: zoom.choose(0)
        }
    }
    Shortcut {
        // Where + is typed with Shift, nobody presses it.
        sequence: "Ctrl+="
        onActivated: zoom.step(1)
    }
}
