import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** One cell: where it is, what it says, and what a person would read there. */
RowLayout {
    id: row

    required property int index
    required property runSheetNote note
    required property string sign

    signal taken(bool isTaken)

    spacing: 8
    height: Math.max(20, toggle.visible ? toggle.implicitHeight : 0)

    PVText {
        text: row.note.place + "\u00A0: " + row.note.text + (row.note.reading === "" ? "" : row.sign + row.note.reading)
        size: Fonts.smallCaption
        color: row.note.isTaken ? Colors.pvPaper : Colors.pvPaperDim
        elide: Text.ElideRight
        Layout.fillWidth: true
        Layout.maximumWidth: Math.ceil(implicitWidth)
        Layout.leftMargin: 21
    }
    PVButton {
        id: toggle

        visible: row.note.canTake
        look: PVButton.Plain
        verticalPadding: 1
        textSize: Fonts.smallCaption
        text: row.note.isTaken ? "Ne pas lire" : "Lire"
        Accessible.name: text + "\u00A0: " + row.note.place
        onClicked: row.taken(!row.note.isTaken)
    }
    Item {
        Layout.fillWidth: true
    }
}
