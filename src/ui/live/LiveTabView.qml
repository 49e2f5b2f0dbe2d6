pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** What the operator watches during the performance. */
Rectangle {
    id: screen

    required property string showId

    readonly property int margin: 16

    color: Colors.pvBlack

    LiveShowViewModel {
        id: live
        showId: screen.showId
    }

    KeepAwake {
        active: screen.visible
    }
    KeyCaptureView {
        onSpace: ShellViewModel.goNext()
        onLeftArrow: ShellViewModel.goPrev()
    }

    Connections {
        target: LockKey
        enabled: screen.visible
        function onPressed(): void {
            ShellViewModel.locked = true;
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Flickable {
            id: scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            contentWidth: width
            contentHeight: songs.height + 2 * screen.margin
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            onHeightChanged: showCurrentSoon.restart()

            /** From the top, unless the current song's card would be cut off below. */
            function showCurrent() {
                const bottom = songs.y + current.y + current.height + songs.spacing;
                contentY = Math.max(0, Math.min(bottom - height, songs.y + current.y - songs.spacing));
            }

            ScrollBar.vertical: PVScrollBar {}

            // Once the cards are laid out.
            Timer {
                id: showCurrentSoon

                interval: 0
                onTriggered: scroll.showCurrent()
            }

            Connections {
                target: live
                function onContentChanged() {
                    showCurrentSoon.restart();
                }
            }

            Column {
                id: songs

                x: screen.margin
                y: screen.margin
                width: scroll.width - 2 * screen.margin
                spacing: 14

                Column {
                    width: parent.width
                    spacing: 4
                    visible: pastSongs.count > 0

                    PVText {
                        text: "Précédent"
                        size: Fonts.smallCaption
                        color: Colors.pvPaperFaint
                    }
                    Repeater {
                        id: pastSongs

                        model: live.past
                        delegate: PVText {
                            required property songInfo song

                            width: songs.width
                            text: song.title
                            size: 16
                            weight: Font.Medium
                            color: Colors.pvPaperDim
                            elide: Text.ElideRight
                        }
                    }
                }

                CurrentSongPanel {
                    id: current

                    width: parent.width
                    visible: live.hasCurrent
                    song: live.current
                    songCount: live.songCount
                    countdown: live.countdown
                    urgent: live.urgent
                }

                Column {
                    visible: live.finished
                    spacing: 8
                    topPadding: 16
                    bottomPadding: 16

                    PVText {
                        text: "● Show terminé"
                        size: 11
                        weight: Font.Bold
                        color: Colors.pvRed
                    }
                    PVText {
                        text: "Fin de la setlist"
                        size: 32
                        weight: Font.Bold
                    }
                }

                Column {
                    width: parent.width
                    spacing: 8
                    visible: nextSongs.count > 0

                    PVText {
                        text: "À suivre"
                        size: Fonts.smallCaption
                        color: Colors.pvPaperFaint
                    }
                    Repeater {
                        id: nextSongs

                        model: live.next
                        delegate: NextSongButton {
                            width: songs.width
                            announced: index === 0 && live.urgent
                            onClicked: live.jumpToNext(index)
                        }
                    }
                }
            }
        }

        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: screen.margin
            Layout.rightMargin: screen.margin
            Layout.topMargin: 8
            Layout.bottomMargin: 8

            PVText {
                text: live.position + " / " + live.songCount
                size: 13
                weight: Font.DemiBold
                color: Colors.pvPaperDim
                Layout.fillWidth: true
            }
            PVText {
                text: "Espace = suivant   ·   ← = précédent"
                size: Fonts.caption
                color: Colors.pvPaperFaint
            }
            PVButton {
                visible: !ShellViewModel.locked
                look: PVButton.Plain
                glyph: Icons.lock
                glyphSize: 13
                text: "Verrouiller"
                tip: "Ctrl+L"
                verticalPadding: 0
                onClicked: ShellViewModel.locked = true
            }
        }

        Rectangle {
            color: Colors.pvLine
            implicitHeight: 1
            Layout.fillWidth: true
        }

        LtcPanel {
            songsWithTimecode: live.songsWithTimecode
            Layout.fillWidth: true
            Layout.margins: 12
            Layout.leftMargin: screen.margin
            Layout.rightMargin: screen.margin
        }
    }
}
