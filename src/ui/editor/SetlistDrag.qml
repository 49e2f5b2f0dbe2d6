pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Ui

/** Follows the drag of a row: tells which row the pointer enters, and scrolls the list while the
    pointer is held near one of its edges. */
Item {
    id: drag

    required property ListView list

    /** The height of the zones at the edges that scroll. */
    readonly property int edge: 36
    property real pointerY: 0
    property Item rowUnderPointer: null

    signal started(string songId)
    signal entered(int position)
    signal ended

    function start(row: SongRowView): void {
        rowUnderPointer = row;
        list.currentIndex = row.index;
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

    Timer {
        id: scroll

        interval: 16
        repeat: true
        onTriggered: {
            const first = drag.list.originY - drag.list.topMargin;
            const last = Math.max(first, drag.list.originY + drag.list.contentHeight + drag.list.bottomMargin - drag.list.height);
            drag.list.contentY = Math.max(first, Math.min(last, drag.list.contentY + drag.speed()));
            drag.enterRow();
        }
    }
}
