import QtQuick
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** Asks at each start how this computer is to be used. */
FocusScope {
    id: view

    signal choose(int mode)
    signal resume

    Column {
        anchors.centerIn: parent
        // The smallest window has room for all of it, and the notice of a newer version.
        spacing: view.height < 600 ? 20 : 28

        AppHeader {
            anchors.horizontalCenter: parent.horizontalCenter
        }
        ResumeCard {
            id: resumeCard

            visible: ResumeViewModel.title !== ""
            focus: visible
            width: cards.width
            onClicked: view.resume()
            Keys.onEscapePressed: ResumeViewModel.dismiss()
        }
        PVText {
            text: "Comment ce poste doit-il être utilisé ?"
            size: 14
            color: Colors.pvPaperDim
            anchors.horizontalCenter: parent.horizontalCenter
        }
        Row {
            id: cards

            spacing: 20
            anchors.horizontalCenter: parent.horizontalCenter

            LaunchModeCard {
                text: "Admin"
                subtitle: "Crée et pilote le show"
                glyph: Icons.controls
                focus: !resumeCard.visible
                onClicked: view.choose(RootView.Admin)
            }
            LaunchModeCard {
                text: "Affichage"
                subtitle: "Suit le show à distance sur le réseau"
                glyph: Icons.screen
                onClicked: view.choose(RootView.Affichage)
            }
        }
    }

    AppFooter {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 20
    }
}
