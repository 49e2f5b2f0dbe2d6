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
        onConfirmationNeeded: confirmation.open()
    }
    PVDialog {
        id: confirmation

        title: "Importer tout cela\u00A0?"
        message: sheetImport.songCount + " morceaux" + (sheetImport.mostGuests > 1 ? ", jusqu'à " + sheetImport.mostGuests + " guests pour un seul" : "") + ". C'est bien plus qu'un show n'en a d'habitude\u00A0: vérifie les colonnes et la première ligne."
        action: "Importer"
        destructive: true
        onAccepted: sheetImport.createConfirmedShow()
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
        Item {
            id: middle

            visible: sheetImport.hasWorkbook
            Layout.fillWidth: true
            Layout.fillHeight: true

            RunSheetMapping {
                id: mapping

                sheetImport: sheetImport
                width: parent.width + barWidth
                height: table.visible ? Math.min(contentHeight, Math.max(parent.height * 0.55, parent.height - 14 - table.wholeHeight)) : parent.height
            }
            RunSheetTable {
                id: table

                visible: !sheetImport.isSheetEmpty && middle.height > 260
                sheetImport: sheetImport
                width: parent.width
                y: mapping.height + 14
                height: Math.min(wholeHeight, parent.height - y)
            }
        }

        ImportFailure {
            sheetImport: sheetImport
            Layout.topMargin: 10
            Layout.fillWidth: true
        }
        ImportProgress {
            sheetImport: sheetImport
            Layout.topMargin: 10
            Layout.fillWidth: true
        }

        PVButton {
            visible: !sheetImport.hasWorkbook
            enabled: !sheetImport.isReading
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
