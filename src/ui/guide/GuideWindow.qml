pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** The guide, beside the screens that it is about: its chapters on the left, one of them on the
    right. Space and ← stay the live screen's. */
CrewWindow {
    id: window

    property alias chapter: chapters.currentIndex

    title: "Tessivo — Guide"
    minimumWidth: 640
    minimumHeight: 460
    width: 1100
    height: 760

    onChapterChanged: page.contentY = 0

    RowLayout {
        anchors.fill: parent
        spacing: 0

        Rectangle {
            color: Colors.pvBlack2
            Layout.preferredWidth: 220
            Layout.fillHeight: true

            PVListView {
                id: chapters

                anchors.fill: parent
                anchors.margins: 8
                anchors.bottomMargin: 48
                focus: true
                activeFocusOnTab: true
                keyNavigationEnabled: true
                spacing: 2
                currentIndex: 0
                model: GuideViewModel.titles
                Accessible.role: Accessible.List
                Accessible.name: "Chapitres"

                delegate: PVComboEntry {
                    required property string modelData

                    label: modelData
                    current: ListView.isCurrentItem
                    highlighted: current && chapters.activeFocus
                    focusPolicy: Qt.NoFocus
                    onClicked: chapters.currentIndex = index
                }
            }
            PVButton {
                anchors.horizontalCenter: parent.horizontalCenter
                anchors.bottom: parent.bottom
                anchors.bottomMargin: 10
                text: "Imprimer ce chapitre…"
                onClicked: GuideViewModel.print(window.chapter)
            }
        }

        Flickable {
            id: page

            readonly property int margin: 24

            function scroll(by: real): void {
                contentY = Math.max(0, Math.min(contentHeight - height, contentY + by));
            }

            Layout.fillWidth: true
            Layout.fillHeight: true
            contentWidth: width
            contentHeight: blocks.height + 2 * margin
            boundsBehavior: Flickable.StopAtBounds
            clip: true

            ScrollBar.vertical: PVScrollBar {}

            Column {
                id: blocks

                x: page.margin
                y: page.margin
                width: Math.min(page.width - 2 * page.margin, 860)
                spacing: 14

                Repeater {
                    model: GuideViewModel.blocks(window.chapter)
                    delegate: GuideBlockView {
                        width: blocks.width
                        onFollowed: link => {
                            const wanted = GuideViewModel.chapterOf(link);
                            if (wanted >= 0) {
                                window.chapter = wanted;
                            }
                        }
                    }
                }
            }
        }
    }

    PVDialog {
        id: failure

        title: "Papier"
        message: "L'impression n'a pas abouti."
        action: "OK"
        cancels: false
    }
    Connections {
        target: GuideViewModel

        function onPrintFailed(): void {
            failure.open();
        }
    }

    Shortcut {
        sequence: "PgDown"
        onActivated: page.scroll(0.9 * page.height)
    }
    Shortcut {
        sequence: "PgUp"
        onActivated: page.scroll(-0.9 * page.height)
    }
    Shortcut {
        // In full screen it leaves that.
        sequence: "Escape"
        enabled: window.visibility !== Window.FullScreen && !failure.visible
        onActivated: window.close()
    }
}
