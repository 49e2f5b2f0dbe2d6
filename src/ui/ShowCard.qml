import QtQuick
import QtQuick.Templates as T
import Tessivo.Style
import Tessivo.Ui

/** One show of the list; pressing it anywhere but on its bin opens it. */
T.AbstractButton {
    id: card

    required property showInfo show

    signal removalAsked

    implicitHeight: 64
    leftPadding: 16
    rightPadding: 10
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: card.show.name
    Accessible.description: subtitle.text
    Accessible.onPressAction: card.clicked()
    Keys.onReturnPressed: card.clicked()
    Keys.onEnterPressed: card.clicked()

    background: PVCardBackground {
        color: card.down ? Colors.pvLine : card.hovered ? Colors.pvBlack3 : Colors.pvBlack2
        border.color: card.visualFocus ? Colors.pvAmber : Colors.pvLine
    }

    contentItem: Item {
        Column {
            anchors.verticalCenter: parent.verticalCenter
            anchors.left: parent.left
            anchors.right: bin.left
            anchors.rightMargin: 8
            spacing: 4

            PVText {
                text: card.show.name
                size: 16
                weight: Font.DemiBold
                width: parent.width
                elide: Text.ElideRight
                maximumLineCount: 1
                Accessible.ignored: true
            }
            PVText {
                id: subtitle

                text: card.show.songCount + (card.show.songCount === 1 ? " morceau · " : " morceaux · ") + card.show.micCount + " micros configurés"
                size: Fonts.caption
                color: Colors.pvPaperFaint
                width: parent.width
                elide: Text.ElideRight
            }
        }
        PVButton {
            id: bin

            look: PVButton.Plain
            glyph: Icons.trash
            tip: "Supprimer ce show"
            anchors.verticalCenter: parent.verticalCenter
            anchors.right: parent.right
            onClicked: card.removalAsked()
        }
    }
}
