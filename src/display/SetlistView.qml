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

    /// What the current song's card can have above the start of the next song's row and the footer,
    /// once the past songs are scrolled away.
    readonly property real room: height - outerMargin - column.spacing - 80 - footerHeight
    readonly property int footerHeight: 40
    readonly property real pastHeight: card.y
    property bool fitting: false
    property bool keepsPast: true
    /// Whether the current song's card can't be seen whole at its size.
    property bool isCrowded: false

    /// Draws the current song's card as large as it can be with all its guests in view, and gives
    /// up the past songs rather than its legibility.
    function fitCard() {
        fitting = true;
        column.forceLayout();
        keepsPast = card.fitInto(room - pastHeight, 0.7);
        if (!keepsPast) {
            card.fitInto(room, 0.3);
        }
        column.forceLayout();
        isCrowded = card.isReduced || card.height > room;
        scrollToCard();
        fitting = false;
    }

    function scrollToCard() {
        contentY = keepsPast ? 0 : Math.max(0, Math.min(pastHeight + column.spacing, contentHeight - height));
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

    // A show may have more songs to come, with more guests, than a screen can show in time.
    OneByOne {
        id: making

        places: nextSongs
    }

    onRoomChanged: fitCardSoon()
    onPastHeightChanged: fitCardSoon()

    contentWidth: width
    contentHeight: column.height + 2 * outerMargin
    onContentHeightChanged: scrollToCard()  // more songs to come were made
    boundsBehavior: Flickable.StopAtBounds
    clip: true

    ScrollBar.vertical: PVScrollBar {}

    // Nobody scrolls a screen above a stage: each new song brings its card back into view, and is
    // never seen in the layout of the one before.
    Connections {
        target: view.content
        function onCurrentChanged() {
            view.fitCard();
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

        CurrentSongCard {
            id: card

            width: column.width
            song: view.content.current
            countdown: view.content.countdown
            urgent: view.content.urgent
            onHeightChanged: view.fitCardSoon()
            onGuestsOnOneLineChanged: view.fitCardSoon()
        }

        Column {
            width: parent.width
            spacing: 8
            visible: nextSongs.count > 0

            Repeater {
                id: nextSongs

                model: view.content.next
                onItemAdded: making.start()
                delegate: NextSongPlace {
                    width: column.width
                    urgent: view.content.urgent
                }
            }
        }

        Item {
            width: 1
            height: 30
        }
    }
}
