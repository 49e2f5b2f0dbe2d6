import QtQuick
import Tessivo.Style

/** A field over a stored text. It takes up a change made elsewhere, and leaves the caret alone
    while what is stored is what is typed. */
PVTextField {
    required property string stored

    /** To lay out a text of thousands of characters holds the screen: it is whole only where it can
        be edited. */
    readonly property int longestLookedAt: 300
    readonly property string shown: activeFocus || stored.length <= longestLookedAt ? stored : stored.slice(0, longestLookedAt) + "…"

    ownUndo: false  // each letter is stored at once, and taken back where it is stored

    Component.onCompleted: show(shown)
    onShownChanged: show(shown)
}
