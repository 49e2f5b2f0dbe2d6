import QtQuick
import Tessivo.Kit
import Tessivo.Style

/** A window beside the operator's, to be watched by the crew: one instance, opened on demand. */
Window {
    id: window

    property int visibilityBefore: Window.Windowed

    color: Colors.pvBlack

    /** Shows the window where it was closed, or brings it to the front. */
    function present(): void {
        if (visibility === Window.Hidden || visibility === Window.Minimized) {
            visibility = visibilityBefore;
        }
        raise();
        requestActivate();
    }

    onVisibilityChanged: now => {
        if (now !== Window.Hidden && now !== Window.Minimized) {
            visibilityBefore = now;
        }
    }
    onClosing: {
        // Given once by hand, the place holds when the window is made again.
        x = x;
        y = y;
    }

    // Above what is shown, whose lists would take both clicks to scroll.
    Item {
        anchors.fill: parent
        z: 1

        TapHandler {
            onDoubleTapped: fullScreen.toggle()
        }
    }
    FullScreenShortcut {
        id: fullScreen
        target: window
        escapes: true
    }
    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }
    KeepAwake {
        active: window.visible
    }
}
