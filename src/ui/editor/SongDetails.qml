import QtQuick
import QtQuick.Layouts
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** What an open song shows: its start timecode, its length and its guests. */
ColumnLayout {
    id: details

    required property ShowEditorViewModel editor
    required property editedSong song
    required property var drafts

    spacing: 10

    RowLayout {
        spacing: 8

        PVText {
            text: "Timecode LTC"
            size: Fonts.caption
            color: Colors.pvPaperFaint
        }
        DraftField {
            id: timecode

            stored: details.song.timecode
            drafts: details.drafts
            draftKey: details.song.id + " timecode"
            placeholderText: "--:--:--:--"
            Accessible.name: "Timecode LTC"
            color: Colors.pvAmber
            font.family: Fonts.digits
            Layout.preferredWidth: 110
            onCommit: typed => details.editor.setTimecode(details.song.id, typed)
        }
        PVButton {
            look: PVButton.Plain
            glyph: Icons.clear
            glyphSize: 13
            foreground: Colors.pvPaperFaint
            tip: "Effacer le timecode"
            focusPolicy: Qt.NoFocus  // an emptied field does the same, and Tab goes on to the next
            onClicked: timecode.submit("")
        }
        PVText {
            text: "Durée"
            size: Fonts.caption
            color: Colors.pvPaperFaint
            Layout.leftMargin: 8
        }
        DraftField {
            id: length

            stored: details.song.length
            drafts: details.drafts
            draftKey: details.song.id + " length"
            placeholderText: "mm:ss"
            Accessible.name: "Durée"
            color: Colors.pvPaperDim
            font.family: Fonts.digits
            Layout.preferredWidth: 70
            onCommit: typed => details.editor.setLength(details.song.id, typed)
        }
        PVButton {
            look: PVButton.Plain
            glyph: Icons.clear
            glyphSize: 13
            foreground: Colors.pvPaperFaint
            tip: "Effacer la durée"
            focusPolicy: Qt.NoFocus  // an emptied field does the same, and Tab goes on to the next
            onClicked: length.submit("")
        }
    }
    PVText {
        text: "LTC : ex 00143200 → 00:14:32:00 — Durée : ex 3:45"
        size: Fonts.caption
        font.italic: true
        color: Colors.pvPaperDim
    }
    PVText {
        visible: text !== ""
        text: details.song.faultText
        size: Fonts.caption
        weight: Font.DemiBold
        color: Colors.pvAmber
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
    GuestsEditorView {
        showId: details.editor.showId
        songId: details.song.id
        drafts: details.drafts
        Layout.fillWidth: true
    }
}
