import QtQuick
import Tessivo.Style

/** A field whose text counts once Return is pressed. What is typed until then is kept in `drafts`
    under `draftKey`, so that it outlives the field when its row leaves the screen. */
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
        text = stored;
    }

    Component.onCompleted: text = drafts[draftKey] ?? stored
    onTextEdited: drafts[draftKey] = text
    onAccepted: submit(text)
    onStoredChanged: {
        if (!(draftKey in drafts)) {
            text = stored;
        }
    }
}
