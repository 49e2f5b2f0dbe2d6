import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** How the timecode line does, and what could be done about it. Takes no room when there is nothing
    to say. */
ColumnLayout {
    spacing: 6
    visible: LineHealthViewModel.line !== "" || LineHealthViewModel.offer !== ""

    RowLayout {
        visible: LineHealthViewModel.line !== ""
        spacing: 6

        Icon {
            visible: LineHealthViewModel.alarming
            text: Icons.alert
            size: 12
            color: Colors.pvAmber
        }
        PVReadout {
            what: "État de la ligne"
            text: LineHealthViewModel.line
            digits: false
            size: Fonts.caption
            color: LineHealthViewModel.alarming ? Colors.pvAmber : Colors.pvPaperDim
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }

    RowLayout {
        visible: LineHealthViewModel.offer !== ""
        spacing: 10

        PVText {
            text: LineHealthViewModel.offer
            size: Fonts.caption
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        PVButton {
            text: LineHealthViewModel.remedy
            onClicked: LineHealthViewModel.accept()
        }
        PVButton {
            text: "Ignorer"
            look: PVButton.Plain
            onClicked: LineHealthViewModel.dismiss()
        }
    }
}
