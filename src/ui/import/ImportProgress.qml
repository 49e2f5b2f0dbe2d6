import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** How far long work is, with a way out of it. Most work is over before this shows. */
RowLayout {
    id: progress

    required property ShowImportViewModel sheetImport
    property real done: 0
    property bool isLong: false

    visible: sheetImport.isWorking && isLong
    spacing: 12

    Connections {
        target: progress.sheetImport
        function onWorkChanged(): void {
            progress.isLong = progress.isLong && progress.sheetImport.isWorking;
        }
    }
    Timer {
        interval: 500
        running: progress.sheetImport.isWorking
        onTriggered: progress.isLong = true
    }
    Timer {
        interval: 100
        running: progress.visible
        repeat: true
        triggeredOnStart: true
        onTriggered: progress.done = progress.sheetImport.progress()
    }

    PVText {
        text: (progress.sheetImport.isReading ? "Lecture du fichier… " : "Calcul des morceaux… ") + Math.round(progress.done * 100) + "\u00A0%"
        size: Fonts.caption
        color: Colors.pvPaperDim
    }
    Rectangle {
        implicitHeight: 4
        radius: 2
        color: Colors.pvBlack3
        Layout.fillWidth: true

        Rectangle {
            width: parent.width * progress.done
            height: parent.height
            radius: 2
            color: Colors.pvAmber
        }
    }
    PVButton {
        text: "Annuler"
        onClicked: progress.sheetImport.cancel()
    }
}
