pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** What importing would give: the songs, the lengths and timecodes read, the notations that could
    be, and on demand the cells that can't be and those to be checked. */
Column {
    id: preview

    enum Shown {
        Nothing,
        Unread,
        Doubtful
    }

    required property ShowImportViewModel sheetImport
    property int unfolded: ImportPreview.Nothing

    function counted(count: int, noun: string): string {
        return count + " " + noun + (count > 1 ? "s" : "");
    }
    function toggle(part: int): void {
        unfolded = unfolded === part ? ImportPreview.Nothing : part;
    }

    spacing: 4

    PVText {
        readonly property bool one: preview.sheetImport.songCount === 1

        text: preview.sheetImport.songCount + (one ? " morceau sera créé" : " morceaux seront créés")
        size: Fonts.caption
        color: Colors.pvPaperFaint
    }
    PVText {
        visible: text !== ""
        text: preview.sheetImport.losses
        size: Fonts.caption
        color: Colors.pvAmber
        width: parent.width
        wrapMode: Text.Wrap
    }
    Repeater {
        model: preview.sheetImport.notations

        RunSheetNotationRow {
            width: preview.width
            onAccepted: accepted => preview.sheetImport.acceptNotation(index, accepted)
        }
    }
    Flow {
        width: parent.width
        spacing: 18

        PVText {
            visible: preview.sheetImport.unusualCount === 0 && text !== ""
            text: preview.sheetImport.durationCount + preview.sheetImport.timecodeCount > 0 ? readings.text : ""
            size: Fonts.smallCaption
            color: Colors.pvPaperFaint
        }
        FoldButton {
            visible: preview.sheetImport.unusualCount > 0
            isUnfolded: preview.unfolded === ImportPreview.Unread
            text: readings.text + ", " + preview.counted(preview.sheetImport.unreadCount, "cellule") + (preview.sheetImport.unreadCount > 1 ? " illisibles" : " illisible")
            onClicked: preview.toggle(ImportPreview.Unread)
        }
        FoldButton {
            visible: preview.sheetImport.doubtCount > 0
            isUnfolded: preview.unfolded === ImportPreview.Doubtful
            text: "À vérifier\u00A0: " + preview.sheetImport.doubtCount
            onClicked: preview.toggle(ImportPreview.Doubtful)
        }
    }
    RunSheetNotes {
        visible: preview.unfolded === ImportPreview.Unread
        width: parent.width
        model: preview.sheetImport.unreadCells
        total: preview.sheetImport.unusualCount
        onTaken: (position, taken) => preview.sheetImport.takeCell(position, taken)
    }
    RunSheetNotes {
        visible: preview.unfolded === ImportPreview.Doubtful
        width: parent.width
        model: preview.sheetImport.doubtfulCells
        total: preview.sheetImport.doubtCount
        sign: " · "
    }

    component FoldButton: PVButton {
        property bool isUnfolded: false

        look: PVButton.Plain
        horizontalPadding: 0
        verticalPadding: 2
        glyph: isUnfolded ? Icons.chevronDown : Icons.chevronRight
        glyphSize: 14
        textSize: Fonts.smallCaption
        textWeight: Font.Normal
    }

    QtObject {
        id: readings

        readonly property string text: preview.counted(preview.sheetImport.durationCount, "durée") + " et " + preview.counted(preview.sheetImport.timecodeCount, "timecode") + " lus"
    }
}
