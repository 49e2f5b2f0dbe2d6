import QtQuick
import Tessivo.Style

/** A field over a stored text. It takes up a change made elsewhere, and leaves the caret alone
    while what is stored is what is typed. */
PVTextField {
    required property string stored

    ownUndo: false  // each letter is stored at once, and taken back where it is stored

    Component.onCompleted: show(stored)
    onStoredChanged: show(stored)
}
