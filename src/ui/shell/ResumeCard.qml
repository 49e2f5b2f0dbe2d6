import QtQuick
import QtQuick.Templates as T
import Tessivo.Style
import Tessivo.Ui

/** Goes on with what a crash broke off. */
T.Button {
    id: card

    implicitHeight: 72
    padding: 16
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: ResumeViewModel.title + ", " + ResumeViewModel.detail
    Accessible.onPressAction: card.clicked()
    Keys.onReturnPressed: card.clicked()
    Keys.onEnterPressed: card.clicked()

    background: LaunchCardBackground {
        card: card
    }

    contentItem: Item {
        Icon {
            id: icon

            text: Icons.resume
            size: 30
            color: Colors.pvAmber
            anchors.verticalCenter: parent.verticalCenter
        }
        Column {
            anchors.left: icon.right
            anchors.leftMargin: 14
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4

            PVText {
                text: ResumeViewModel.title
                size: 16
                weight: Font.DemiBold
                width: parent.width
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            PVText {
                text: ResumeViewModel.detail
                size: Fonts.caption
                color: Colors.pvPaperDim
                width: parent.width
                elide: Text.ElideRight
                Accessible.ignored: true
            }
        }
    }
}
