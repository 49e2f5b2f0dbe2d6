pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** All shows, and the ways to make another. */
FocusScope {
    id: home

    implicitWidth: 480
    implicitHeight: 420

    ColumnLayout {
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.topMargin: 24
        anchors.bottomMargin: 20
        width: Math.min(parent.width - 40, 460)
        spacing: 16

        AppHeader {
            Layout.alignment: Qt.AlignHCenter
        }

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            PVListView {
                id: list

                anchors.fill: parent
                anchors.rightMargin: -barWidth
                model: ShowListViewModel
                delegate: ShowCard {
                    width: list.width - list.barWidth
                    onClicked: ShowListViewModel.open(show.id)
                    onRemovalAsked: removal.ask(show)
                }
            }
            PVText {
                visible: list.count === 0
                text: "Aucun show pour l'instant"
                color: Colors.pvPaperFaint
                anchors.centerIn: parent
            }
        }

        RowLayout {
            spacing: 12
            Layout.alignment: Qt.AlignHCenter

            PVButton {
                text: "Nouveau show"
                glyph: Icons.add
                enabled: !ShellViewModel.locked
                focus: true
                onClicked: {
                    naming.value = "";
                    naming.open();
                }
            }
            PVButton {
                text: "Importer un conducteur"
                glyph: Icons.importSheet
                enabled: !ShellViewModel.locked
                onClicked: importing.open()
            }
        }

        AppFooter {
            Layout.alignment: Qt.AlignHCenter
        }
    }

    PVDialog {
        id: naming

        title: "Nom du show"
        placeholder: "Nom du show"
        action: "Créer"
        onAccepted: ShowListViewModel.createShow(value)
    }

    PVDialog {
        id: removal

        property showInfo showToDelete

        function ask(show: showInfo) {
            showToDelete = show;
            open();
        }

        title: "Supprimer ce show ?"
        subject: showToDelete.name
        message: "Cette action supprimera le show et toute sa setlist."
        action: "Supprimer"
        destructive: true
        onAccepted: ShowListViewModel.deleteShow(showToDelete.id)
    }

    ImportSheet {
        id: importing

        objectName: "importing"
    }
}
