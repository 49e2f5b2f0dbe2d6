pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** The sheet as it is, with what each column means over it. The row of the headings and the first
    one of songs are lit, and chosen by their marks beside the rows. */
Rectangle {
    id: sheet

    required property ShowImportViewModel sheetImport

    readonly property int rowHeight: 26
    readonly property int headHeight: 38
    readonly property int gutterWidth: 156
    /** The height at which nothing need be scrolled. */
    readonly property int wholeHeight: headHeight + cells.rows * rowHeight + 16

    color: Colors.pvBlack2
    radius: 6
    border.color: Colors.pvLine

    TableView {
        id: head

        anchors.left: cells.left
        anchors.right: cells.right
        y: 1
        height: sheet.headHeight
        clip: true
        interactive: false
        syncView: cells
        syncDirection: Qt.Horizontal
        model: cells.model
        // Each row of the model could tell; the first is enough.
        rowHeightProvider: row => row === 0 ? sheet.headHeight : 0

        delegate: Rectangle {
            required property string letters
            required property string meaning

            color: Colors.pvBlack3
            border.color: Colors.pvLine
            border.width: meaning === "" ? 0 : 1

            PVText {
                x: 8
                y: 4
                text: parent.letters
                size: 11
                weight: Font.DemiBold
                color: Colors.pvPaperDim
            }
            PVText {
                x: 8
                y: 19
                width: parent.width - 12
                text: parent.meaning
                size: Fonts.smallCaption
                color: Colors.pvAmber
                elide: Text.ElideRight
            }
        }
    }

    TableView {
        id: gutter

        anchors.top: cells.top
        anchors.bottom: cells.bottom
        x: 1
        width: sheet.gutterWidth
        clip: true
        interactive: false
        syncView: cells
        syncDirection: Qt.Vertical
        model: cells.model
        columnWidthProvider: column => column === 0 ? sheet.gutterWidth : 0

        delegate: Item {
            id: side

            required property int row

            HoverHandler {
                id: hover
            }
            PVText {
                width: 44
                height: parent.height
                text: side.row + 1
                size: Fonts.smallCaption
                color: Colors.pvPaperDim
                horizontalAlignment: Text.AlignRight
                verticalAlignment: Text.AlignVCenter
            }
            RunSheetRowMark {
                x: 52
                width: 46
                anchors.verticalCenter: parent.verticalCenter
                text: "titres"
                fill: Colors.pvPaperDim
                isLit: side.row + 1 === sheet.sheetImport.headerRow
                isOffered: hover.hovered
                Accessible.name: "Titres de colonnes à la ligne " + (side.row + 1)
                onClicked: sheet.sheetImport.headerRow = side.row + 1
            }
            RunSheetRowMark {
                x: 101
                width: 50
                anchors.verticalCenter: parent.verticalCenter
                text: "données"
                isLit: side.row + 1 === sheet.sheetImport.startRow
                isOffered: hover.hovered
                Accessible.name: "Première ligne de données à la ligne " + (side.row + 1)
                onClicked: sheet.sheetImport.startRow = side.row + 1
            }
        }
    }

    TableView {
        id: cells

        x: sheet.gutterWidth + 2
        y: sheet.headHeight + 1
        width: sheet.width - x - 1
        height: sheet.height - y - 1
        clip: true
        // The last row and column come out from under the scroll bars.
        bottomMargin: 12
        rightMargin: 12
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        model: sheet.sheetImport.table
        columnWidthProvider: column => sheet.sheetImport.table.widthOf(column)
        rowHeightProvider: () => sheet.rowHeight
        reuseItems: true

        ScrollBar.horizontal: PVScrollBar {}
        ScrollBar.vertical: PVScrollBar {}

        Accessible.role: Accessible.Table
        Accessible.name: "Le tableau"
        Keys.onPressed: event => {
            const page = height - sheet.rowHeight;
            const steps = {
                [Qt.Key_Up]: [0, -sheet.rowHeight],
                [Qt.Key_Down]: [0, sheet.rowHeight],
                [Qt.Key_Left]: [-80, 0],
                [Qt.Key_Right]: [80, 0],
                [Qt.Key_PageUp]: [0, -page],
                [Qt.Key_PageDown]: [0, page],
                [Qt.Key_Home]: [-contentWidth, -contentHeight],
                [Qt.Key_End]: [0, contentHeight]
            };
            const step = steps[event.key];
            if (step) {
                contentX = Math.max(0, Math.min(contentWidth + rightMargin - width, contentX + step[0]));
                contentY = Math.max(0, Math.min(contentHeight + bottomMargin - height, contentY + step[1]));
                event.accepted = true;
            }
        }

        delegate: Rectangle {
            id: cell

            required property int row
            required property string cellText
            required property string meaning
            required property bool isUnread
            readonly property bool isHeading: row + 1 === sheet.sheetImport.headerRow
            readonly property bool isFirst: row + 1 === sheet.sheetImport.startRow
            readonly property bool isData: row + 1 >= sheet.sheetImport.startRow

            color: isHeading ? Colors.pvLine : isFirst ? Colors.withOpacity(Colors.pvAmber, 0.16) : "transparent"

            Rectangle {
                width: parent.width
                height: 1
                y: parent.height - 1
                color: Colors.pvBlack3
            }
            PVText {
                x: 8
                width: parent.width - 12
                height: parent.height
                text: cell.cellText
                size: Fonts.caption
                weight: cell.isHeading || cell.isUnread ? Font.DemiBold : Font.Normal
                color: cell.isUnread ? Colors.pvAmber : cell.isHeading || (cell.isData && cell.meaning !== "") ? Colors.pvPaper : cell.isData ? Colors.pvPaperDim : Colors.pvPaperFaint
                elide: Text.ElideRight
                verticalAlignment: Text.AlignVCenter
            }
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: "transparent"
        border.color: cells.activeFocus ? Colors.pvAmber : Colors.pvLine
    }
}
