import QtQuick
import QtQuick.Layouts
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

    contentItem: RowLayout {
        spacing: 14

        Icon {
            text: Icons.resume
            size: 30
            color: Colors.pvAmber
        }
        ColumnLayout {
            spacing: 4

            PVText {
                text: ResumeViewModel.title
                size: 16
                weight: Font.DemiBold
                elide: Text.ElideRight
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            PVText {
                text: ResumeViewModel.detail
                size: Fonts.caption
                color: Colors.pvPaperDim
                Accessible.ignored: true
            }
        }
    }
}
