import QtQuick

/** Toggles full screen for the window that holds it: F11 and the platform's own keys. */
Shortcut {
    required property Window target
    property int visibilityBefore: Window.Windowed

    // qmllint disable unqualified
    sequences: ["F11", StandardKey.FullScreen]
    // qmllint enable unqualified
    onActivated: {
        if (target.visibility === Window.FullScreen) {
            target.visibility = visibilityBefore;
        } else {
            visibilityBefore = target.visibility;
            target.visibility = Window.FullScreen;
        }
    }
}
