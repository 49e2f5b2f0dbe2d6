import QtQuick
import Tessivo.Style

/** A field over a stored text. It takes up a change made elsewhere, and leaves the caret alone
    while what is stored is what is typed. */
PVTextField {
    id: field

    required property string stored

    ownUndo: false  // each letter is stored at once, and taken back where it is stored

    function show(): void {
        if (text !== stored) {
            text = stored;
            if (!activeFocus) {
                cursorPosition = 0;  // a long text is read from its beginning
            }
        }
    }

    Component.onCompleted: show()
    onStoredChanged: show()
}
