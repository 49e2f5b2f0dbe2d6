import QtQuick

/** Toggles full screen for the window that holds it: F11 and the platform's own keys. */
Shortcut {
    id: shortcut

    required property Window target
    property int visibilityBefore: Window.Windowed
    /** Whether Escape leaves full screen, too: where nothing else wants it. */
    property bool escapes: false

    function toggle(): void {
        if (target.visibility === Window.FullScreen) {
            target.visibility = visibilityBefore;
        } else {
            visibilityBefore = target.visibility;
            target.visibility = Window.FullScreen;
        }
    }

    // Spelled out: where the platform's standard key is F11 too, naming both makes it ambiguous, and
    // then neither acts. The second is Control-Command-F.
    sequences: ["F11", "Ctrl+Meta+F"]
    onActivated: toggle()

    readonly property Shortcut leaving: Shortcut {
        sequence: "Escape"
        enabled: shortcut.escapes && shortcut.target.visibility === Window.FullScreen
        onActivated: shortcut.toggle()
    }
}
