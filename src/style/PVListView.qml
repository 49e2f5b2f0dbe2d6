pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** A list that the keyboard goes through row by row. Its delegates have an `index`. */
ListView {
    id: list

    /** How much of the width the scroll bar takes when it stands beside the rows. */
    readonly property int barWidth: 14

    /** How far the list scrolls. */
    readonly property real firstY: originY - topMargin
    readonly property real lastY: Math.max(firstY, originY + contentHeight + bottomMargin - height)

    /** Shows the last row with the margin below it. */
    function showEnd(): void {
        positionViewAtEnd();
        contentY = lastY;
    }

    clip: true
    spacing: 8
    boundsBehavior: Flickable.StopAtBounds
    // The current row is the one with the keyboard, which stays alive when it is scrolled away.
    currentIndex: -1
    highlightFollowsCurrentItem: false
    keyNavigationEnabled: false

    ScrollBar.vertical: PVScrollBar {}

    /** Brings the row into view in which this item stands, if it stands in one, and the item when
        the row is higher than the list. */
    function follow(focused: Item): void {
        let row = focused;
        while (row && row.parent !== contentItem) {
            row = row.parent;
        }
        if (row && row === headerItem) {
            positionViewAtBeginning();
        } else if (row && row.index !== undefined) {
            currentIndex = row.index;
            // The Tab key goes on only to a row that is there.
            const next = focused.focusReason === Qt.TabFocusReason ? 1 : focused.focusReason === Qt.BacktabFocusReason ? -1 : 0;
            positionViewAtIndex(Math.max(0, Math.min(count - 1, row.index + next)), ListView.Contain);
            positionViewAtIndex(row.index, ListView.Contain);
            const top = focused.mapToItem(contentItem, 0, 0).y;
            contentY = Math.max(top + focused.height - height, Math.min(contentY, top));
        }
    }

    Connections {
        target: list.Window.window
        function onActiveFocusItemChanged() {
            list.follow(list.Window.activeFocusItem);
        }
    }

    RowOrder {
        rows: list.contentItem
    }
}
