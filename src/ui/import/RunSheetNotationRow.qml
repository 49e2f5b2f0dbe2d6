import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** A notation that isn't read by itself, with an example and the choice to read it too. */
RowLayout {
    id: row

    required property int index
    required property runSheetNote note

    signal accepted(bool accepted)

    spacing: 8

    PVText {
        text: row.note.place + "\u00A0: " + row.note.text + " → " + row.note.reading
        size: Fonts.caption
        color: row.note.isTaken ? Colors.pvPaper : Colors.pvAmber
        elide: Text.ElideRight
        Layout.fillWidth: true
        Layout.maximumWidth: Math.ceil(implicitWidth)
    }
    PVButton {
        text: row.note.isTaken ? "Ne plus lire ces notations" : "Lire aussi ces notations"
        verticalPadding: 3
        implicitHeight: 24
        textSize: Fonts.smallCaption
        Accessible.name: text + "\u00A0: " + row.note.text
        onClicked: row.accepted(!row.note.isTaken)
    }
    Item {
        Layout.fillWidth: true
    }
}
