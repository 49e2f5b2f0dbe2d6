import QtQuick
import QtQuick.Layouts
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** One guest: who it is, on which microphone and mix, how loud. */
RowLayout {
    id: row

    required property SongGuestsViewModel guests
    required property editedGuest guest
    required property var drafts

    /** Gives the keyboard to the name. */
    function takeKeyboard(): void {
        name.forceActiveFocus();
    }

    spacing: 8

    EditedField {
        id: name

        stored: row.guest.name
        placeholderText: "Nom de l'artiste"
        Layout.fillWidth: true
        Layout.minimumWidth: 140
        onTextEdited: row.guests.setName(row.guest.id, text)
        onAccepted: row.guests.setName(row.guest.id, text)
    }
    LabelChooser {
        label: row.guest.mic
        labels: row.guests.mics
        placeholder: "Micro"
        whose: row.guest.name
        Accessible.name: placeholder
        Layout.preferredWidth: 130
        onChoose: label => row.guests.setMic(row.guest.id, label)
    }
    LabelChooser {
        label: row.guest.iem
        labels: row.guests.iems
        placeholder: "IEM"
        whose: row.guest.name
        Accessible.name: placeholder
        Layout.preferredWidth: 110
        onChoose: label => row.guests.setIem(row.guest.id, label)
    }
    DraftField {
        stored: row.guest.volume
        drafts: row.drafts
        draftKey: row.guest.id + " volume"
        placeholderText: "Volume"
        Accessible.description: row.guest.name
        Layout.preferredWidth: 70
        onCommit: typed => row.guests.setVolume(row.guest.id, typed)
    }
    PVButton {
        look: PVButton.Plain
        glyph: Icons.remove
        foreground: Colors.pvPaperFaint
        tip: "Retirer ce guest"
        Accessible.description: row.guest.name
        onClicked: row.guests.remove(row.guest.id)

        AimGuard {
            aim: row.y
        }
    }
}
