pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** The guests of one song. */
Column {
    id: view

    required property string showId
    required property string songId
    required property var drafts

    spacing: 6

    SongGuestsViewModel {
        id: songGuests

        showId: view.showId
        songId: view.songId
    }

    Repeater {
        id: rows

        model: songGuests.guests
        delegate: GuestRowView {
            width: view.width
            guests: songGuests
            drafts: view.drafts
        }
    }
    PVText {
        visible: rows.count === 0
        text: "Pas de guest sur ce morceau (instrumental / toi seul)"
        size: Fonts.caption
        color: Colors.pvPaperFaint
    }
    PVButton {
        look: PVButton.Plain
        glyph: Icons.add
        text: "Ajouter un guest"
        onClicked: {
            songGuests.add();
            view.forceLayout();
            (rows.itemAt(rows.count - 1) as GuestRowView).takeKeyboard();
        }
    }
}
