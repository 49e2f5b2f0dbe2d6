pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** The open show: its name, the way to its stage display, and its three tabs. */
FocusScope {
    id: view

    /** In display order. */
    enum EditorTab {
        Setlist,
        Config,
        Live
    }

    required property string showId
    /** What is typed in this show and not yet stored, by field; outlives the view. */
    required property var drafts
    property int selectedTab: EditorView.Setlist

    // Locked, only the live tab is there, also after a restart.
    Component.onCompleted: {
        if (ShellViewModel.locked) {
            selectedTab = EditorView.Live;
        }
    }
    // A field of the tab that was left must not keep the keyboard.
    onSelectedTabChanged: pages.children[selectedTab].forceActiveFocus()

    implicitWidth: 700
    implicitHeight: 500

    ShowEditorViewModel {
        id: editedShow
        showId: view.showId
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Rectangle {
            color: Colors.pvBlack2
            implicitHeight: header.implicitHeight + 24
            Layout.fillWidth: true

            RowLayout {
                id: header

                anchors.fill: parent
                anchors.leftMargin: 20
                anchors.rightMargin: 20
                spacing: 12

                PVButton {
                    look: PVButton.Plain
                    glyph: Icons.home
                    enabled: !ShellViewModel.locked
                    glyphSize: 18
                    tip: "Retour à tous les shows"
                    onClicked: ShellViewModel.closeShow()
                }
                PVButton {
                    id: name

                    look: PVButton.Plain
                    label: editedShow.name
                    textSize: 15
                    foreground: Colors.pvPaper
                    tip: "Renommer le show"
                    enabled: !ShellViewModel.locked
                    Accessible.description: tip
                    Layout.maximumWidth: implicitWidth
                    Layout.fillWidth: true
                    onClicked: {
                        rename.value = editedShow.name;
                        rename.open();
                    }
                }
                Item {
                    Layout.fillWidth: true
                }
                PVButton {
                    look: PVButton.Filled
                    glyph: Icons.arrowUpRight
                    text: "Ouvrir l'affichage"
                    textSize: 13
                    horizontalPadding: 14
                    onClicked: ShellViewModel.openDisplay()
                }
            }
            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width
                height: 1
                color: Colors.pvLine
            }
        }

        Row {
            leftPadding: 4
            Accessible.role: Accessible.PageTabList
            Accessible.name: "Onglets"

            Repeater {
                model: ["Setlist", "Micros & IEM", "Vue live"]
                delegate: EditorTabButton {
                    required property string modelData
                    required property int index

                    label: modelData
                    checked: view.selectedTab === index
                    enabled: checked || !ShellViewModel.locked
                    onClicked: view.selectedTab = index
                }
            }
        }

        // All three live: what was typed in one is there when it is shown again.
        StackLayout {
            id: pages

            currentIndex: view.selectedTab
            Layout.fillWidth: true
            Layout.fillHeight: true

            SetlistTabView {
                editor: editedShow
                drafts: view.drafts
                focus: true
            }
            ConfigTabView {
                editor: editedShow
                drafts: view.drafts
            }
            LiveTabView {
                showId: view.showId
            }
        }
    }

    PVDialog {
        id: rename

        title: "Renommer le show"
        placeholder: "Nom du show"
        action: "Valider"
        onAccepted: editedShow.rename(value)
    }
}
