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
            width: column.width
            song: view.content.current
            countdown: view.content.countdown
            urgent: view.content.urgent
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
