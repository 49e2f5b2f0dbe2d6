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
    /** A picture that may not be the present any more is dimmed, and fitted into whatever room it has. */
    property bool outdated: false
    /** How much of its lower edge something else lies over. */
    property real covered: 0

    readonly property int minimumWidth: 900
    readonly property int minimumHeight: 560
    readonly property real magnification: Math.max(1, Math.min(width / minimumWidth, height / minimumHeight))
    /** Drawn larger than what matters has room for, the setlist gives way to the current song. */
    readonly property bool fits: content.panel === StageContent.Songs && (outdated || zoom.fits || (zoom.factor > 1 && setlist.isCrowded))
    readonly property real drawnScale: fits ? 1 : magnification * zoom.factor

    readonly property bool hasSetlist: content.panel === StageContent.Songs || content.panel === StageContent.Finished

    readonly property real contentOpacity: outdated ? 0.55 : 1

    color: Colors.pvBlack

    // A forgotten pointer would stand over a name.
    BlankPointer {
        target: stage.Window.window
        active: stage.visible && stage.Window.visibility === Window.FullScreen
    }

    Item {
        width: stage.width / stage.drawnScale
        height: stage.height / stage.drawnScale
        scale: stage.drawnScale
        transformOrigin: Item.TopLeft
        opacity: stage.contentOpacity

        SetlistView {
            id: setlist

            width: stage.width / (stage.magnification * zoom.factor)
            height: stage.height / (stage.magnification * zoom.factor)
            visible: stage.content.panel === StageContent.Songs && !stage.fits
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
            visible: !stage.fits
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

    Loader {
        anchors.fill: parent
        anchors.bottomMargin: Math.max(36, stage.covered + 8)
        opacity: stage.contentOpacity
        active: stage.fits
        Component.onCompleted: setSource("FittedStage.qml", {
            content: Qt.binding(() => stage.content)
        })
    }

    Zoom {
        id: zoom
        anchors.fill: parent
        view: "stage"
        canFit: true
    }
}
