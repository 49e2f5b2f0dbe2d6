import QtQuick

/** How large a window's content is drawn: Ctrl and +, − or the wheel change it, Ctrl+0 takes it
    back. Lies over that content, and lets everything else through. */
Item {
    id: zoom

    /** 0.5 to 5. */
    property real factor: 1

    function step(by: int): void {
        // Eight steps double.
        const next = Math.round(8 * Math.log2(factor)) + by;
        factor = Math.max(0.5, Math.min(5, Math.pow(2, next / 8)));
    }

    Shortcut {
        // Where + is typed with Shift, nobody presses it.
        sequences: ["Ctrl++", "Ctrl+="]
        onActivated: zoom.step(1)
    }
    Shortcut {
        sequence: "Ctrl+-"
        onActivated: zoom.step(-1)
    }
    Shortcut {
        sequence: "Ctrl+0"
        onActivated: zoom.factor = 1
    }
    WheelHandler {
        acceptedModifiers: Qt.ControlModifier
        onWheel: event => zoom.step(Math.sign(event.angleDelta.y))
    }
}
