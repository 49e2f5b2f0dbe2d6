pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** The setlist: rows that open, move and go, and a line where songs are added. */
FocusScope {
    id: tab

    required property ShowEditorViewModel editor
    /** What was typed and not yet committed, by field: rows come and go with scrolling. */
    required property var drafts
    /** The one row that is open, empty when none is. */
    property string expandedSongId: ""
    property string draggingSongId: ""

    function submit(): void {
        if (editor.addSong(entry.text)) {
            entry.clear();
            rows.showEnd();
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        PVListView {
            id: rows

            topMargin: 16
            bottomMargin: 16
            model: tab.editor.songs
            Layout.fillWidth: true
            Layout.fillHeight: true

            PVText {
                visible: rows.count === 0
                text: "Ajoute ton premier morceau ci-dessous ↓"
                font.italic: true
                color: Colors.pvPaperFaint
                anchors.horizontalCenter: parent.horizontalCenter
                topPadding: 30
                bottomPadding: 30
            }

            delegate: SongRowView {
                id: row

                x: 16
                width: ListView.view.width - 32
                editor: tab.editor
                drafts: tab.drafts
                isExpanded: tab.expandedSongId === song.id
                isDragged: tab.draggingSongId === song.id

                onToggleExpand: tab.expandedSongId = isExpanded ? "" : song.id
                onDragStarted: drag.start(row)
                onDragMoved: position => drag.moveTo(mapToItem(rows, position).y)
                onDragEnded: drag.end()
            }
        }

        Rectangle {
            color: Colors.pvLine
            implicitHeight: 1
            Layout.fillWidth: true
        }

        Rectangle {
            color: Colors.pvBlack2
            implicitHeight: entryBar.implicitHeight + 32
            Layout.fillWidth: true

            RowLayout {
                id: entryBar

                anchors.fill: parent
                anchors.margins: 16
                spacing: 10

                PVTextField {
                    id: entry

                    placeholderText: "Titre du morceau, puis Entrée…"
                    focus: true
                    radius: 5
                    leftPadding: 10
                    rightPadding: 10
                    topPadding: 10
                    bottomPadding: 10
                    Layout.fillWidth: true
                    Component.onCompleted: text = tab.drafts.entry ?? ""
                    onTextChanged: tab.drafts.entry = text
                    onAccepted: tab.submit()
                }
                PVButton {
                    look: PVButton.Filled
                    text: "Ajouter"
                    verticalPadding: 10
                    Layout.fillHeight: true
                    onClicked: tab.submit()
                }
            }
        }
    }

    SetlistDrag {
        id: drag

        list: rows
        onStarted: songId => tab.draggingSongId = songId
        onEntered: position => tab.editor.moveSongTo(tab.draggingSongId, position)
        onEnded: tab.draggingSongId = ""
    }
}
