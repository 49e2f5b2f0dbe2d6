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

    /** Draws the column as large as it can be in this height, but no smaller than `least` times its
        size; false when that is still too high. Lays out at once, before the next frame. */
    function fitInto(available: real, least: real): bool {
        column.scale = 1;
        layOut();
        while (height > available && column.scale > least) {
            column.scale *= 0.95;
            layOut();
        }
        return height <= available;
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
