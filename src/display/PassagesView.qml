pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Display
import Tessivo.Style

/** Songs down, microphones across: a dot where one is used, a line where it changes hands. Follows
    the cursor. */
FocusScope {
    id: view

    required property PassagesContent content

    readonly property int columnCount: content.columns.length
    readonly property real titleWidth: Math.min(280, width * 0.3)
    readonly property real columnWidth: Math.max(112, Math.min(200, (width - titleWidth - 12) / columnCount))
    readonly property bool isEmpty: songs.count === 0 || columnCount === 0

    IdleView {
        anchors.fill: parent
        visible: view.isEmpty
        text: view.content.showName || "Passages"
        subtitle: view.content.showName === "" ? "En attente d'un show…" : songs.count === 0 ? "Setlist vide" : "Aucun micro dans ce show"
    }

    Item {
        id: header

        visible: !view.isEmpty
        width: parent.width
        height: 52
        clip: true

        Row {
            x: view.titleWidth - songs.contentX

            Repeater {
                model: view.content.columns
                delegate: Column {
                    id: heading

                    required property passageColumn modelData

                    width: view.columnWidth
                    y: modelData.isListed ? 18 : 10

                    PVText {
                        x: 10
                        width: parent.width - 16
                        text: heading.modelData.label
                        size: 14
                        weight: Font.Bold
                        color: Colors.pvAmber
                        elide: Text.ElideRight
                    }
                    PVText {
                        visible: !heading.modelData.isListed
                        x: 10
                        text: "hors liste"
                        size: Fonts.smallCaption
                        font.italic: true
                        color: Colors.pvPaperDim
                    }
                }
            }
        }
        // The titles stay where they are, and so does what is above them.
        Rectangle {
            width: view.titleWidth
            height: parent.height
            color: Colors.pvBlack

            PVText {
                x: 20
                y: 17
                width: parent.width - 28
                text: view.content.showName
                size: 15
                weight: Font.Bold
                elide: Text.ElideRight
                Accessible.role: Accessible.Heading
            }
        }
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: Colors.pvLine
        }
    }

    ListView {
        id: songs

        visible: !view.isEmpty
        anchors.fill: parent
        anchors.topMargin: header.height
        clip: true
        model: view.content.rows
        contentWidth: Math.max(width, view.titleWidth + view.columnCount * view.columnWidth)
        flickableDirection: Flickable.HorizontalAndVerticalFlick
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: PVScrollBar {
            id: bar
        }
        ScrollBar.horizontal: PVScrollBar {}

        focus: true
        keyNavigationEnabled: false
        Keys.onUpPressed: bar.decrease()
        Keys.onDownPressed: bar.increase()

        readonly property int rowHeight: 46
        readonly property int currentRow: view.content.currentRow

        /** What comes is of more use than what was: the current song stands in the upper third. */
        function follow(): void {
            moveToCurrent.to = originY + Math.max(0, Math.min(currentRow * rowHeight - height / 4, contentHeight - height));
            moveToCurrent.restart();
        }

        onCurrentRowChanged: followSoon.restart()
        onCountChanged: followSoon.restart()
        onHeightChanged: followSoon.restart()

        // Once the rows stand where they will.
        Timer {
            id: followSoon

            interval: 0
            onTriggered: songs.follow()
        }

        NumberAnimation {
            id: moveToCurrent

            target: songs
            property: "contentY"
            duration: 200
            easing.type: Easing.InOutQuad
        }

        delegate: PassageRowView {
            width: songs.contentWidth
            height: songs.rowHeight
            titleWidth: view.titleWidth
            titleX: songs.contentX
            columnCount: view.columnCount
            columnWidth: view.columnWidth
            currentRow: songs.currentRow
        }
    }
}
