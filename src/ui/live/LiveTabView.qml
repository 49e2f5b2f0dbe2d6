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
    /** A larger window shows larger letters, not more of them. */
    readonly property real growth: Math.max(1, Math.min(width / 1180, height / 720))

    // It has the keyboard itself: an assistive tool is told so.
    Accessible.role: Accessible.Pane
    Accessible.name: "Vue live"
    color: Colors.pvBlack
    onVisibleChanged: showSoon.restart()

    LiveShowViewModel {
        id: live
        showId: screen.showId
    }
    NextHandOversViewModel {
        id: nextHandOvers
        showId: screen.showId
    }
    ShowClockViewModel {
        id: showClock
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
        width: screen.width / screen.growth
        height: screen.height / screen.growth
        scale: screen.growth
        transformOrigin: Item.TopLeft
        spacing: 0

        Flickable {
            id: scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            contentWidth: width
            contentHeight: songs.height + 2 * screen.margin
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            onHeightChanged: showSoon.restart()
            onWidthChanged: showSoon.restart()

            /** Where the screen itself last scrolled to; a hand may have scrolled since. */
            property real shownFrom: 0

            readonly property bool announces: live.urgent
            onAnnouncesChanged: showCurrent()

            /** Room for the title of the announced song below the card of the current one. */
            readonly property int startOfNext: 86

            /** From the top, unless the card, or the next song while it is announced, would be cut
                off below: then the past songs yield. The card is drawn as small as it must be. */
            function showCurrent(): void {
                if (!screen.visible) {
                    return;
                }
                const below = announces && coming.visible ? startOfNext : 0;
                current.fitInto(height - 2 * songs.spacing - below, 0.6);
                past.forceLayout();
                coming.forceLayout();
                songs.forceLayout();
                let top = current.y - songs.spacing;
                let bottom = current.y + current.height;
                if (announces && nextSongs.count > 0) {
                    top = current.y;
                    bottom = coming.y + nextSongs.itemAt(0).y + nextSongs.itemAt(0).height;
                }
                shownFrom = Math.max(0, songs.y + Math.min(bottom + songs.spacing - height, top));
                contentY = shownFrom;
            }

            ScrollBar.vertical: PVScrollBar {}

            // A layout that is being made can't be made again.
            Timer {
                id: showSoon

                interval: 0
                onTriggered: scroll.showCurrent()
            }

            Connections {
                target: live
                function onContentChanged() {
                    scroll.showCurrent();
                }
            }

            Column {
                id: songs

                x: screen.margin
                y: screen.margin
                width: scroll.width - 2 * screen.margin
                spacing: 14

                Column {
                    id: past

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
                    id: coming

                    width: parent.width
                    spacing: 8
                    visible: nextSongs.count > 0

                    // On one line, or the next title would go out of sight in a small window.
                    Item {
                        width: parent.width
                        height: handOvers.height

                        PVText {
                            id: heading

                            text: "À suivre"
                            size: Fonts.smallCaption
                            color: Colors.pvPaperFaint
                            anchors.baseline: handOvers.baseline
                        }
                        HandOversLine {
                            id: handOvers

                            text: nextHandOvers.line
                            anchors.left: heading.right
                            anchors.leftMargin: 14
                            anchors.right: parent.right
                        }
                    }
                    Repeater {
                        id: nextSongs

                        model: live.next
                        delegate: NextSongButton {
                            width: songs.width
                            announced: index === 0 && live.urgent
                            shownFrom: scroll.shownFrom
                            onHeightChanged: {
                                if (announced) {
                                    showSoon.restart();
                                }
                            }
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
                Layout.minimumWidth: implicitWidth
            }
            PVReadout {
                what: "Heure"
                text: showClock.clock
                size: 13
                Layout.leftMargin: 12
            }
            PVText {
                text: showClock.plannedEnd
                size: 13
                color: Colors.pvPaperDim
                elide: Text.ElideRight
                Layout.leftMargin: 6
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
