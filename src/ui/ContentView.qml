import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** The active show, or the list of all shows without one. */
FocusScope {
    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: Desk.activeShowId === "" ? home : show
    }

    Component {
        id: home

        HomeView {
            focus: true
        }
    }

    Component {
        id: show

        ColumnLayout {
            spacing: 0

            RowLayout {
                spacing: 12
                Layout.fillWidth: true
                Layout.margins: 16
                Layout.bottomMargin: 0

                PVText {
                    text: Desk.activeShowName
                    size: 18
                    weight: Font.Bold
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                PVButton {
                    text: "Ouvrir l'affichage"
                    glyph: Icons.screen
                    onClicked: Desk.openDisplay()
                }
            }
            LiveTabView {
                showId: Desk.activeShowId
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }
    }
}
