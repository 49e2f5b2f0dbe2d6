import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** Makes a show of a spreadsheet run sheet. */
FocusScope {
    id: view

    /** The screen has nothing left to do: the show is imported, or the operator leaves. */
    signal done

    readonly property alias hasWorkbook: sheetImport.hasWorkbook

    Accessible.role: Accessible.Dialog
    Accessible.name: "Importer un conducteur"

    ShowImportViewModel {
        id: sheetImport

        onImported: view.done()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 24
        spacing: 0

        PVText {
            text: "Importer un conducteur"
            size: 18
            weight: Font.Bold
            Layout.bottomMargin: 16
        }

        PVText {
            visible: !sheetImport.hasWorkbook
            text: "Choisis un fichier Excel (.xlsx) contenant le conducteur du show."
            size: 13
            color: Colors.pvPaperFaint
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        RunSheetMapping {
            visible: sheetImport.hasWorkbook
            sheetImport: sheetImport
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.rightMargin: -barWidth
        }

        PVText {
            visible: text !== ""
            text: sheetImport.errorMessage
            size: Fonts.caption
            color: Colors.pvRed
            wrapMode: Text.Wrap
            Layout.topMargin: 10
            Layout.fillWidth: true
        }

        PVButton {
            visible: !sheetImport.hasWorkbook
            text: "Choisir un fichier…"
            look: PVButton.Filled
            focus: true
            Layout.topMargin: 14
            onClicked: sheetImport.pickFile()
        }
        Item {
            visible: !sheetImport.hasWorkbook
            Layout.fillHeight: true
        }

        ImportPreview {
            objectName: "importPreview"
            visible: sheetImport.hasWorkbook
            sheetImport: sheetImport
            Layout.topMargin: 10
            Layout.fillWidth: true
        }
        RowLayout {
            visible: sheetImport.hasWorkbook
            spacing: 12
            Layout.topMargin: 14

            PVTextField {
                text: sheetImport.showName
                placeholderText: "Nom du show"
                radius: 5
                Layout.fillWidth: true
                onTextEdited: sheetImport.showName = text
                onAccepted: {
                    if (sheetImport.songCount > 0) {
                        sheetImport.createShow();
                    }
                }
            }
            PVButton {
                text: "Importer"
                look: PVButton.Filled
                enabled: sheetImport.songCount > 0
                opacity: 1
                fill: enabled ? Colors.pvRed : Colors.pvLine
                onClicked: sheetImport.createShow()
            }
        }

        PVButton {
            text: "Fermer"
            look: PVButton.Plain
            foreground: Colors.pvPaperFaint
            horizontalPadding: 0
            Layout.topMargin: 14
            onClicked: view.done()
        }
    }
}
