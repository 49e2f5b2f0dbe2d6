import QtQuick
import QtQuick.Layouts
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** One label in its field, and the way to remove it. */
RowLayout {
    id: row

    required property string value

    signal edited(string label)
    signal removed

    spacing: 8

    EditedField {
        id: field

        stored: row.value
        Accessible.name: row.value || "Libellé vide"
        Layout.fillWidth: true
        onTextEdited: row.edited(text)
        onAccepted: row.edited(text)
    }
    PVButton {
        look: PVButton.Plain
        glyph: Icons.remove
        foreground: Colors.pvPaperFaint
        tip: "Retirer " + (row.value || "ce libellé vide")
        onClicked: row.removed()

        AimGuard {
            aim: row.y
        }
    }
}
