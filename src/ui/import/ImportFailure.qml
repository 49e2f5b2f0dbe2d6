import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Why the import can't go on, and what can be done about it. */
Column {
    id: failure

    required property ShowImportViewModel sheetImport

    visible: sheetImport.errorMessage !== ""
    spacing: 3

    PVText {
        text: (failure.sheetImport.isErrorPast ? "Fichier précédent\u00A0: " : "") + failure.sheetImport.errorMessage
        size: Fonts.caption
        color: failure.sheetImport.isErrorPast ? Colors.pvPaperFaint : Colors.pvRed
        width: parent.width
        wrapMode: Text.Wrap
    }
    PVText {
        visible: text !== ""
        text: failure.sheetImport.advice
        size: Fonts.caption
        color: Colors.pvPaperDim
        width: parent.width
        wrapMode: Text.Wrap
    }
}
