import QtQuick
import QtQuick.Templates as T
import Tessivo.Style
import Tessivo.Ui

/** One way to use this computer. */
T.Button {
    id: card

    required property string glyph
    required property string subtitle

    implicitWidth: 190
    implicitHeight: 140
    padding: 12
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: card.text
    Accessible.description: card.subtitle
    Accessible.onPressAction: card.clicked()
    Keys.onReturnPressed: card.clicked()
    Keys.onEnterPressed: card.clicked()

    background: LaunchCardBackground {
        card: card
    }

    contentItem: Item {
        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 6
            width: parent.width - 20
            spacing: 10

            Icon {
                text: card.glyph
                size: 30
                color: Colors.pvPaper
                anchors.horizontalCenter: parent.horizontalCenter
            }
            PVText {
                text: card.text
                size: 16
                weight: Font.DemiBold
                anchors.horizontalCenter: parent.horizontalCenter
                Accessible.ignored: true
            }
            PVText {
                text: card.subtitle
                size: Fonts.caption
                color: Colors.pvPaperDim
                width: parent.width
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                Accessible.ignored: true
            }
        }
    }
}
