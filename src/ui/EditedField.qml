import QtQuick
import Tessivo.Style

/** A field over a stored text. It takes up a change made elsewhere, and leaves the caret alone
    while what is stored is what is typed. */
PVTextField {
    id: field

    required property string stored

    Component.onCompleted: text = stored
    onStoredChanged: {
        if (text !== stored) {
            text = stored;
        }
    }
}
