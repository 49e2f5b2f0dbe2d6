pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Follows the drag of a row with the song's title: tells which row the pointer enters, and scrolls
    the list while the pointer is held near one of its edges. Escape takes the song back to where it
    was. */
Item {
    id: drag

    required property PVListView list

    /** The height of the zones at the edges that scroll. */
    readonly property int edge: 36
    property real pointerY: 0
    property Item rowUnderPointer: null
    property int startPosition: 0
    property string title: ""
    /** What had the keyboard, which goes along with the current row. */
    property Item focused: null

    signal started(string songId)
    signal entered(int position)
    signal ended

    function start(row: SongRowView): void {
        rowUnderPointer = row;
        startPosition = row.index;
        title = row.song.title;
        focused = Window.activeFocusItem;
        list.currentIndex = row.index;
        visible = true;
        forceActiveFocus();
        started(row.song.id);
    }

    /** `y` is the pointer's place in the list. */
    function moveTo(y: real): void {
        pointerY = y;
        scroll.running = speed() !== 0;
        enterRow();
    }

    function end(): void {
        scroll.running = false;
        rowUnderPointer = null;
        visible = false;
        focused?.forceActiveFocus();
        ended();
    }

    /** Pixels per step, growing with the depth in the zone. */
    function speed(): real {
        const above = edge - pointerY;
        const below = pointerY - (list.height - edge);
        return above > 0 ? -Math.min(above, edge) / 3 : below > 0 ? Math.min(below, edge) / 3 : 0;
    }

    // A row counts when the pointer comes to it. Rows that a move brings under a resting pointer
    // don't, or two rows of unlike heights would change places for ever.
    function enterRow(): void {
        const row = list.itemAt(list.width / 2, list.contentY + pointerY) as SongRowView;
        if (row && row !== rowUnderPointer) {
            rowUnderPointer = row;
            entered(row.index);
        }
    }

    parent: list
    anchors.fill: parent
    visible: false
    z: 2

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.NoButton
        cursorShape: Qt.ClosedHandCursor
    }
    PVCardBackground {
        x: 30
        y: drag.pointerY - height / 2
        width: Math.min(shown.implicitWidth + 24, parent.width - 60)
        height: 34
        border.color: Colors.pvAmber

        PVText {
            id: shown

            x: 12
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 24
            text: drag.title
            elide: Text.ElideRight
        }
    }
    Shortcut {
        sequence: "Escape"
        enabled: drag.visible
        onActivated: {
            drag.entered(drag.startPosition);
            drag.end();
        }
    }

    Timer {
        id: scroll

        interval: 16
        repeat: true
        onTriggered: {
            drag.list.contentY = Math.max(drag.list.firstY, Math.min(drag.list.lastY, drag.list.contentY + drag.speed()));
            drag.enterRow();
        }
    }
}
