import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** One guest of the current song: the name over microphone, IEM and volume. */
Rectangle {
    id: card

    required property guestInfo modelData
    property real maximumWidth: 600

    width: Math.min(maximumWidth, content.implicitWidth + 28)
    height: content.height + 28
    radius: 8
    color: Colors.withOpacity(Colors.pvRed, 0.1)
    border.color: Colors.pvRed

    Column {
        id: content

        x: 14
        y: 14
        width: card.width - 28
        spacing: 6

        readonly property real valueWidth: (card.maximumWidth - 28 - 2 * 16) / 3

        PVText {
            text: card.modelData.name || "—"
            size: 22
            weight: Font.Bold
            width: Math.min(implicitWidth, card.maximumWidth - 28)
            elide: Text.ElideRight
            anchors.horizontalCenter: parent.horizontalCenter
        }
        Row {
            spacing: 16
            anchors.horizontalCenter: parent.horizontalCenter

            DisplayTechItem {
                label: "MICRO"
                value: card.modelData.mic
                maximumWidth: content.valueWidth
            }
            DisplayTechItem {
                label: "IEM"
                value: card.modelData.iem
                maximumWidth: content.valueWidth
            }
            DisplayTechItem {
                visible: card.modelData.volume !== ""
                label: "VOL"
                value: card.modelData.volume
                maximumWidth: content.valueWidth
            }
        }
    }
}
