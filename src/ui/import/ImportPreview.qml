// In Qt 6.4 a bound component can't be the header or footer of a list, so ids are reached unbound.
// qmllint disable unqualified
import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** What importing would give: the songs, the lengths and timecodes read, and on demand the cells
    that can't be. */
Column {
    id: preview

    required property ShowImportViewModel sheetImport
    property bool expanded: false

    function counted(count: real, noun: string): string {
        return count + " " + noun + (count > 1 ? "s" : "");
    }

    spacing: 4

    PVText {
        readonly property bool one: preview.sheetImport.songCount === 1

        text: preview.sheetImport.songCount + (one ? " morceau sera créé" : " morceaux seront créés")
        size: Fonts.caption
        color: Colors.pvPaperFaint
    }
    PVText {
        visible: preview.sheetImport.unreadCount === 0 && preview.sheetImport.durationCount + preview.sheetImport.timecodeCount > 0
        text: readings.text
        size: Fonts.smallCaption
        color: Colors.pvPaperFaint
    }
    PVButton {
        id: toggle

        visible: preview.sheetImport.unreadCount > 0
        look: PVButton.Plain
        horizontalPadding: 0
        verticalPadding: 2
        glyph: preview.expanded ? Icons.chevronDown : Icons.chevronRight
        glyphSize: 14
        textSize: Fonts.smallCaption
        textWeight: Font.Normal
        text: readings.text + ", " + preview.counted(preview.sheetImport.unreadCount, "cellule") + (preview.sheetImport.unreadCount > 1 ? " illisibles" : " illisible")
        onClicked: preview.expanded = !preview.expanded
    }
    ListView {
        id: cells

        visible: toggle.visible && preview.expanded
        width: parent.width
        // In a small window the mapping needs the room.
        height: Math.min(contentHeight, 96, Math.max(44, Window.height - 500))
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: visible ? preview.sheetImport.unreadCells : []
        ScrollBar.vertical: PVScrollBar {}

        delegate: PVText {
            required property string modelData

            width: cells.width - 12
            leftPadding: 21
            bottomPadding: 3
            text: modelData
            size: Fonts.smallCaption
            color: Colors.pvPaperDim
            elide: Text.ElideRight
        }
        footer: PVText {
            readonly property real others: preview.sheetImport.unreadCount - cells.count

            visible: others > 0
            height: visible ? 18 : 0
            leftPadding: 21
            text: "et " + preview.counted(others, "autre")
            size: Fonts.smallCaption
            color: Colors.pvPaperFaint
        }
    }

    QtObject {
        id: readings

        readonly property string text: preview.counted(preview.sheetImport.durationCount, "durée") + " et " + preview.counted(preview.sheetImport.timecodeCount, "timecode") + " lus"
    }
}
