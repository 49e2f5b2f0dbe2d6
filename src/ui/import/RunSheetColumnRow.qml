import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** One column of the run sheet, with the choice of what it means. */
Rectangle {
    id: row

    required property int index
    required property string letters
    required property string heading
    required property int meaning
    /** False when a column to the left has the same meaning. */
    required property bool counts
    required property var roleLabels

    signal roleChosen(int role)

    /** Gives the keyboard to the choice of the meaning. */
    function takeKeyboard(): void {
        chooser.forceActiveFocus();
    }

    implicitHeight: chooser.implicitHeight + 16
    radius: 6
    color: Colors.pvBlack2

    RowLayout {
        anchors.fill: parent
        anchors.margins: 8
        spacing: 8

        PVText {
            text: row.letters
            size: 11
            weight: Font.DemiBold
            color: Colors.pvPaperFaint
            Layout.preferredWidth: 24
        }
        PVText {
            text: row.heading.replace(/\s+/g, " ")
            size: 13
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        PVComboBox {
            id: chooser

            model: row.roleLabels
            currentIndex: row.meaning
            displayText: row.counts ? currentText : currentText + " (ignorée)"
            Accessible.name: "Colonne " + row.letters
            Layout.preferredWidth: 190
            onActivated: chosen => row.roleChosen(chosen)
        }
    }
}
