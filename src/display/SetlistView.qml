pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Display
import Tessivo.Style

/** Past songs, the current song's card and everything still to come, in one scrolling column. */
Flickable {
    id: view

    required property StageContent content

    readonly property int outerMargin: 28

    /// What the current song's card can have above the start of the next song's row and the footer.
    readonly property real room: height - outerMargin - currentSlot.y - column.spacing - 80 - footerHeight
    readonly property int footerHeight: 40
    property bool fitting: false

    /// Draws the current song's card as large as it can be with all its guests in view. A smaller
    /// card takes more of them on a line, so that its height has to be tried.
    function fitCard() {
        fitting = true;
        card.scale = 1;
        card.layOut();
        while (card.height * card.scale > room && card.scale > 0.3) {
            card.scale *= 0.95;
            card.layOut();
        }
        fitting = false;
    }

    /// Not at once: a layout that is being made can't be made again.
    function fitCardSoon() {
        if (!fitting) {
            refit.restart();
        }
    }

    Timer {
        id: refit

        interval: 0
        onTriggered: view.fitCard()
    }

    onRoomChanged: fitCardSoon()

    contentWidth: width
    contentHeight: column.height + 2 * outerMargin
    boundsBehavior: Flickable.StopAtBounds
    clip: true

    ScrollBar.vertical: ScrollBar {
        policy: view.contentHeight > view.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        contentItem: Rectangle {
            implicitWidth: 4
            radius: 2
            color: Colors.pvLine
        }
    }

    // Nobody scrolls a screen above a stage: each new song brings its card back into view.
    Connections {
        target: view.content
        function onCurrentChanged() {
            view.contentY = 0;
            view.fitCardSoon();
        }
    }

    Column {
        id: column

        x: view.outerMargin
        y: view.outerMargin
        width: view.width - 2 * view.outerMargin
        spacing: 16

        Repeater {
            model: view.content.past
            delegate: PastSongRow {
                width: column.width
            }
        }

        Item {
            id: currentSlot

            width: column.width
            height: card.height * card.scale

            CurrentSongCard {
                id: card

                width: currentSlot.width / scale
                transformOrigin: Item.TopLeft
                song: view.content.current
                countdown: view.content.countdown
                urgent: view.content.urgent
                onHeightChanged: view.fitCardSoon()
                onGuestsOnOneLineChanged: view.fitCardSoon()
            }
        }

        Column {
            width: parent.width
            spacing: 8
            visible: nextSongs.count > 0

            Repeater {
                id: nextSongs

                model: view.content.next
                delegate: NextSongRow {
                    width: column.width
                    urgent: first && view.content.urgent
                }
            }
        }

        Item {
            width: 1
            height: 30
        }
    }
}
