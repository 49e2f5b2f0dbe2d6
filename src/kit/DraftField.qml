import QtQuick
import Tessivo.Style

/** A field whose text counts once Return is pressed; Escape takes what is stored back. What is typed
    until then is kept in `drafts` under `draftKey`, so that it outlives the field when its row leaves
    the screen. */
PVTextField {
    id: field

    required property string stored
    required property var drafts
    required property string draftKey

    signal commit(string typed)

    pending: text !== stored
    ownUndo: pending

    function submit(typed: string): void {
        delete drafts[draftKey];
        commit(typed);
        show(stored);
    }

    Component.onCompleted: show(drafts[draftKey] ?? stored)
    onTextEdited: drafts[draftKey] = text
    onAccepted: submit(text)
    onStoredChanged: {
        if (!(draftKey in drafts)) {
            show(stored);
        }
    }
    Keys.onEscapePressed: event => {
        event.accepted = pending;
        if (pending) {
            delete drafts[draftKey];
            show(stored);
        }
    }

    // Unlike the frame of the field with the keyboard.
    Rectangle {
        visible: field.pending
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 3
        radius: field.radius
        color: Colors.pvAmber
    }
}
