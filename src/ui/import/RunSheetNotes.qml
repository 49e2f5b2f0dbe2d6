// In Qt 6.4 a bound component can't be the header or footer of a list, so ids are reached unbound.
// qmllint disable unqualified
import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** Cells that the operator may want to look at, a line each. */
ListView {
    id: notes

    /** How many there are in all; the list has the first ones. */
    required property int total
    /** Between a cell's text and what is said of it. */
    property string sign: " → "
    /** A line's switch was used. */
    signal taken(int position, bool taken)

    height: Math.min(contentHeight, 120, Math.max(44, Window.height - 500))
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: PVScrollBar {}

    delegate: RunSheetNoteRow {
        width: notes.width - 14
        sign: notes.sign
        onTaken: isTaken => notes.taken(index, isTaken)
    }
    footer: PVText {
        readonly property int others: notes.total - notes.count

        visible: others > 0
        height: visible ? 20 : 0
        leftPadding: 21
        text: "et " + others + (others > 1 ? " autres" : " autre")
        size: Fonts.smallCaption
        color: Colors.pvPaperFaint
    }
}
