// In Qt 6.4 a bound component can't be the header or footer of a list, so ids are reached unbound.
// qmllint disable unqualified
import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Which sheet and rows of the workbook count, and what each column means. */
PVListView {
    id: mapping

    required property ShowImportViewModel sheetImport

    spacing: 6
    model: sheetImport.columns

    Connections {
        target: mapping.sheetImport
        function onWorkbookChanged(): void {
            mapping.forceLayout();
            (mapping.itemAtIndex(0) as RunSheetColumnRow)?.takeKeyboard();
        }
    }

    delegate: RunSheetColumnRow {
        width: mapping.width - mapping.barWidth
        roleLabels: mapping.sheetImport.roleLabels
        onRoleChosen: role => mapping.sheetImport.setRole(index, role)
    }

    header: Column {
        width: mapping.width - mapping.barWidth
        spacing: 18
        bottomPadding: 8
        // What another workbook adds to it would be above what is in view.
        onHeightChanged: Qt.callLater(mapping.positionViewAtBeginning)

        Column {
            visible: mapping.sheetImport.sheetNames.length > 1
            width: parent.width
            spacing: 6

            PVText {
                text: "Feuille"
                size: Fonts.caption
                color: Colors.pvPaperFaint
            }
            PVComboBox {
                model: mapping.sheetImport.sheetNames
                currentIndex: mapping.sheetImport.selectedSheetIndex
                width: Math.min(parent.width, 320)
                Accessible.name: "Feuille"
                onActivated: chosen => mapping.sheetImport.selectedSheetIndex = chosen
            }
        }
        Flow {
            width: parent.width
            spacing: 24

            PVStepper {
                caption: "Ligne des titres de colonnes"
                label: "Ligne " + value
                widestLabel: "Ligne 2000"
                value: mapping.sheetImport.headerRow
                to: 2000
                onMoved: row => mapping.sheetImport.headerRow = row
            }
            PVStepper {
                caption: "Première ligne de données"
                label: "Ligne " + value
                widestLabel: "Ligne 2000"
                value: mapping.sheetImport.startRow
                to: 2000
                onMoved: row => mapping.sheetImport.startRow = row
            }
        }
        Row {
            visible: mapping.sheetImport.isSheetEmpty
            spacing: 12

            PVText {
                text: "Cette feuille est vide."
                size: 13
                color: Colors.pvAmber
                anchors.verticalCenter: parent.verticalCenter
            }
            PVButton {
                readonly property int target: mapping.sheetImport.sheetWithCells

                visible: target >= 0
                label: "Passer à «\u00A0" + (mapping.sheetImport.sheetNames[target] ?? "") + "\u00A0»"
                onClicked: mapping.sheetImport.selectedSheetIndex = target
            }
        }
        PVText {
            visible: !mapping.sheetImport.isSheetEmpty
            text: "À quoi correspond chaque colonne ?"
            size: Fonts.caption
            color: Colors.pvPaperFaint
        }
    }

    footer: PVText {
        visible: mapping.sheetImport.unlistedColumns > 0
        height: visible ? 44 : 0
        topPadding: 8
        text: "Les colonnes suivantes ne peuvent pas être choisies\u00A0: un tableau n'en a pas plus de " + mapping.count + "."
        size: Fonts.caption
        color: Colors.pvPaperFaint
        width: mapping.width - mapping.barWidth
        wrapMode: Text.Wrap
    }
}
