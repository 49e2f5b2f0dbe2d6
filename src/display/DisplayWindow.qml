import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** The local stage display in its window: one instance, opened on demand. */
Window {
    id: window

    title: "Tessivo — Affichage"
    minimumWidth: view.minimumWidth
    minimumHeight: view.minimumHeight
    width: minimumWidth
    height: minimumHeight
    color: Colors.pvBlack

    property int visibilityBefore: Window.Windowed

    /** Shows the window where it was closed, or brings it to the front. */
    function present() {
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

    DisplayView {
        id: view
        anchors.fill: parent
    }
    // Above the setlist, which would take both clicks to scroll.
    Item {
        anchors.fill: parent

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
