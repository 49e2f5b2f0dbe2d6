import QtQuick

/** A column that can be drawn smaller so that all of it is seen. It takes its full width at any
    scale: smaller letters break into fewer lines. */
Item {
    id: fitted

    default property alias rows: column.data
    property alias spacing: column.spacing
    /** The width that the rows have, in their own, scaled pixels. */
    readonly property alias rowWidth: column.width
    /** How large the column is drawn, at most 1. */
    readonly property alias drawnScale: column.scale
    /** From each size to the next smaller one. */
    readonly property real step: 0.95

    /** Draws the column as large as it can be in this height, but no smaller than `least` times its
        size; false when that is still too high. Lays out at once, before the next frame: each size
        costs as much as all its texts, so few are tried. */
    function fitInto(available: real, least: real): bool {
        let tooLarge = 0;
        let small = Math.ceil(Math.log(least) / Math.log(step));
        if (drawAt(0) <= available) {
            return true;
        }
        if (drawAt(small) > available) {
            return false;
        }
        while (small - tooLarge > 1) {
            const middle = (small + tooLarge) >> 1;
            if (drawAt(middle) <= available) {
                small = middle;
            } else {
                tooLarge = middle;
            }
        }
        drawAt(small);
        return true;
    }

    /** How high the column is, so many steps smaller. */
    function drawAt(steps: int): real {
        column.scale = Math.pow(step, steps);
        layOut();
        return height;
    }

    function layOut(): void {
        for (let i = 0; i < column.children.length; ++i) {
            (column.children[i] as Flow)?.forceLayout();
        }
        column.forceLayout();
    }

    height: column.height * column.scale

    Column {
        id: column

        width: fitted.width / scale
        transformOrigin: Item.TopLeft
    }
}
