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
        border.width: field.activeFocus || (field.hovered && field.boxed) ? 1 : 0
        border.color: field.activeFocus ? Colors.pvAmber : Colors.pvLine
    }
}
