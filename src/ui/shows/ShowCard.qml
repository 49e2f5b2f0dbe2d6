import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessivo.Style
import Tessivo.Ui

/** One show of the list; pressing it anywhere but on its bin opens it. */
T.AbstractButton {
    id: card

    required property int index
    required property showInfo show

    readonly property string subtitle: show.songCount + (show.songCount === 1 ? " morceau · " : " morceaux · ") + show.micCount + " micros configurés"

    signal removalAsked

    implicitHeight: Math.max(64, implicitContentHeight + 24)
    leftPadding: 16
    rightPadding: 10
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: card.show.name
    Accessible.description: card.subtitle
    Accessible.onPressAction: card.clicked()
    Keys.onReturnPressed: card.clicked()
    Keys.onEnterPressed: card.clicked()

    background: PVCardBackground {
        color: card.down ? Colors.pvLine : card.hovered ? Colors.pvBlack3 : Colors.pvBlack2
        border.color: card.activeFocus ? Colors.pvAmber : Colors.pvLine
    }

    contentItem: RowLayout {
        spacing: 8

        Column {
            spacing: 4
            Layout.fillWidth: true

            PVText {
                text: card.show.name
                size: 16
                weight: Font.DemiBold
                width: parent.width
                wrapMode: Text.Wrap
                elide: Text.ElideRight
                maximumLineCount: 2
                Accessible.ignored: true
            }
            PVText {
                text: card.subtitle
                size: Fonts.caption
                color: Colors.pvPaperFaint
                width: parent.width
                elide: Text.ElideRight
            }
        }
        PVButton {
            look: PVButton.Plain
            glyph: Icons.trash
            enabled: !ShellViewModel.locked
            tip: "Supprimer ce show"
            Accessible.name: "Supprimer « " + card.show.name + " »"
            onClicked: card.removalAsked()
        }
    }
}
