import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/**
 * The stage display: read-only, and readable from far. The layout is drawn for 900 × 560 and grows
 * with the window, so that a wall-sized screen shows large letters rather than many small ones.
 */
Rectangle {
    id: stage

    required property StageContent content
    /** Where the content comes from, told in the footer; empty for this computer's own. */
    property string source: ""

    readonly property int minimumWidth: 900
    readonly property int minimumHeight: 560
    readonly property real magnification: Math.max(1, Math.min(width / minimumWidth, height / minimumHeight))

    readonly property bool hasSetlist: content.panel === StageContent.Songs || content.panel === StageContent.Finished

    color: Colors.pvBlack

    // A forgotten pointer would stand over a name.
    BlankPointer {
        target: stage.Window.window
        active: stage.visible && stage.Window.visibility === Window.FullScreen
    }

    Item {
        width: stage.width / stage.magnification
        height: stage.height / stage.magnification
        scale: stage.magnification
        transformOrigin: Item.TopLeft

        SetlistView {
            anchors.fill: parent
            visible: stage.content.panel === StageContent.Songs
            content: stage.content
        }

        PVText {
            anchors.centerIn: parent
            visible: stage.content.panel === StageContent.Finished
            text: "Merci !"
            size: 56
            weight: Font.Bold
            color: Colors.pvPaperDim
        }

        IdleView {
            anchors.fill: parent
            visible: !stage.hasSetlist
            text: stage.content.panel === StageContent.WaitingForShow ? "Tessivo" : stage.content.showName
            subtitle: {
                switch (stage.content.panel) {
                case StageContent.EmptySetlist:
                    return "Setlist vide";
                case StageContent.NotStarted:
                    return "En attente du premier morceau…";
                default:
                    return "En attente de sélection d'un show…";
                }
            }
        }

        // The setlist fades out behind the footer.
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 56
            gradient: Gradient {
                GradientStop {
                    position: 0
                    color: Colors.withOpacity(Colors.pvBlack, 0)
                }
                GradientStop {
                    position: 0.4
                    color: Colors.pvBlack
                }
            }
        }

        PVText {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 14
            size: 11
            color: Colors.pvPaperFaint
            text: "Tessivo, la conduite des shows en direct · " + Qt.application.version + (stage.source ? " · " + stage.source : "")
        }
    }
}
