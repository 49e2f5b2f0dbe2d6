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

    /** Shows the window, or brings it to the front. */
    function present() {
        if (visibility === Window.Hidden || visibility === Window.Minimized) {
            showNormal();
        }
        raise();
        requestActivate();
    }

    DisplayView {
        id: view
        anchors.fill: parent
    }

    FullScreenShortcut {
        id: fullScreen
        target: window
    }
    TapHandler {
        onDoubleTapped: fullScreen.toggle()
    }
    KeepAwake {
        active: window.visible
    }
}
