import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** A one-line text field. Its accessible name is the placeholder unless it is given another. */
TextField {
    id: field

    property int size: 13
    property int radius: 4
    /** False for a field that lies flat in its row until somebody types in it. */
    property bool boxed: true
    /** True while what is typed doesn't count yet. */
    property bool pending: false
    /** Whether Ctrl+Z takes back what was typed here. A field with nothing in it of its own leaves
        the keys to the program's menu. */
    property bool ownUndo: text !== ""

    implicitHeight: Math.max(boxed ? 30 : 0, contentHeight + topPadding + bottomPadding)
    color: Colors.pvPaper
    placeholderTextColor: Colors.pvPaperFaint
    selectionColor: Colors.pvRedDim
    selectedTextColor: Colors.pvPaper
    selectByMouse: true
    font.family: Fonts.text
    font.pixelSize: size
    leftPadding: 8
    rightPadding: 8
    topPadding: 5
    bottomPadding: 5

    Accessible.role: Accessible.EditableText
    Accessible.name: field.placeholderText

    background: Rectangle {
        radius: field.radius
        color: field.boxed || field.activeFocus ? Colors.pvBlack3 : "transparent"
        border.width: field.activeFocus || field.pending || (field.hovered && field.boxed) ? 1 : 0
        border.color: field.activeFocus || field.pending ? Colors.pvAmber : Colors.pvLine
    }

    PVToolTipOnDemand {
        readonly property bool truncated: !field.activeFocus && field.contentWidth > field.width - field.leftPadding - field.rightPadding

        wanted: field.pending ? field.hovered || field.activeFocus : field.hovered && truncated
        text: field.pending ? "Entrée pour valider" : field.text
    }
}
