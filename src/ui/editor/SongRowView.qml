pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** One song of the setlist. Its header line toggles the details on a tap and drags the row. */
FocusScope {
    id: row

    required property ShowEditorViewModel editor
    required property editedSong song
    required property int index
    required property bool isExpanded
    required property bool isDragged
    required property var drafts

    signal toggleExpand
    signal dragStarted
    /** The pointer of the drag, in this row. */
    signal dragMoved(point position)
    signal dragEnded

    readonly property int padding: 12

    implicitHeight: content.implicitHeight + 2 * padding
    opacity: isDragged ? 0.4 : 1

    Keys.onPressed: event => {
        const step = event.key === Qt.Key_Up ? -1 : event.key === Qt.Key_Down ? 1 : 0;
        if (step !== 0 && event.modifiers === Qt.AltModifier) {
            row.editor.moveSongTo(row.song.id, row.index + step);
            event.accepted = true;
        }
    }
    Component.onDestruction: {
        if (isDragged) {
            dragEnded();
        }
    }

    PVCardBackground {
        anchors.fill: parent
    }

    MouseArea {
        id: handle

        property point pressedAt
        /** One drag a press, also when it is broken off. */
        property bool wasDragged: false

        width: parent.width
        height: row.isExpanded ? header.height + 2 * row.padding : parent.height
        preventStealing: true

        onPressed: mouse => {
            pressedAt = Qt.point(mouse.x, mouse.y);
            wasDragged = false;
        }
        onPositionChanged: mouse => {
            if (!wasDragged && Math.abs(mouse.y - pressedAt.y) >= Application.styleHints.startDragDistance) {
                wasDragged = true;
                row.dragStarted();
            }
            if (row.isDragged) {
                row.dragMoved(Qt.point(mouse.x, mouse.y));
            }
        }
        onReleased: {
            if (row.isDragged) {
                row.dragEnded();
            } else if (containsMouse && !wasDragged) {
                row.toggleExpand();
            }
        }
        onCanceled: {
            if (row.isDragged) {
                row.dragEnded();
            }
        }
    }

    ColumnLayout {
        id: content

        anchors.fill: parent
        anchors.margins: row.padding
        spacing: 8

        RowLayout {
            id: header

            spacing: 10

            Icon {
                text: Icons.dragHandle
                size: 14
                color: Colors.pvPaperFaint
                Layout.preferredWidth: 12

                HoverHandler {
                    cursorShape: Qt.OpenHandCursor
                }
            }
            EditedField {
                id: title

                focus: true
                boxed: false
                size: 15
                leftPadding: 4
                stored: row.song.title
                placeholderText: "Titre du morceau"
                // Beside a short title the row can be tapped.
                Layout.fillWidth: true
                Layout.maximumWidth: activeFocus ? Infinity : Math.max(160, Math.ceil(contentWidth) + leftPadding + rightPadding)
                Layout.leftMargin: -leftPadding
                onTextEdited: row.editor.setTitle(row.song.id, text)
                onAccepted: row.editor.setTitle(row.song.id, text)
            }
            Item {
                Layout.fillWidth: !title.activeFocus
            }
            FaultBadge {
                text: row.song.isCollision ? "Collision" : row.song.faultText !== "" ? "Hors liste" : ""
                isCollision: row.song.isCollision
                faultText: row.song.faultText
            }
            SongBadge {
                text: row.song.timecode
                color: Colors.pvAmber
                fill: Colors.withOpacity(Colors.pvAmber, 0.12)
            }
            SongBadge {
                text: row.song.length
                color: Colors.pvPaperDim
            }
            PVButton {
                look: PVButton.Plain
                glyph: row.isExpanded ? Icons.chevronDown : Icons.chevronRight
                foreground: Colors.pvPaperFaint
                tip: row.isExpanded ? "Replier" : "Déplier"
                Accessible.description: row.song.title
                onClicked: row.toggleExpand()
            }
            PVButton {
                look: PVButton.Plain
                glyph: Icons.remove
                glyphSize: 15
                foreground: Colors.pvPaperFaint
                tip: "Supprimer le morceau"
                Accessible.description: row.song.title
                onClicked: row.editor.removeSong(row.song.id)

                AimGuard {
                    aim: row.y
                }
            }
        }

        Flow {
            id: chips

            visible: !row.isExpanded && row.song.guestCount > 0
            spacing: 8
            Layout.fillWidth: true
            Layout.leftMargin: 22

            Repeater {
                // A number: a changed title gives the same one, and the chips stay.
                model: row.song.guestCount
                delegate: GuestChip {
                    required property int index

                    guest: row.song.guest(index)
                    maximumWidth: chips.width
                }
            }
        }

        // Not a Loader: Qt 6.4's doesn't create bound components.
        Repeater {
            model: row.isExpanded ? 1 : 0
            delegate: SongDetails {
                editor: row.editor
                song: row.song
                drafts: row.drafts
                Layout.fillWidth: true
            }
        }
    }
}
