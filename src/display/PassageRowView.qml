pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Display
import Tessivo.Style

/** One song of the passages; the title stays in view when the microphones are scrolled. */
Item {
    id: row

    required property passageRow passages
    required property int index
    required property int currentRow
    required property real titleX
    required property real titleWidth
    required property int columnCount
    required property real columnWidth

    readonly property bool isCurrent: index === currentRow
    readonly property bool isPast: index < currentRow

    Accessible.role: Accessible.ListItem
    Accessible.name: passages.number + ". " + passages.title + (isCurrent ? ", en cours" : "")
    Accessible.description: passages.inWords

    Rectangle {
        anchors.fill: parent
        visible: row.isCurrent
        color: Colors.pvRedDim
    }

    Row {
        x: row.titleWidth
        opacity: row.isPast ? 0.6 : 1

        Repeater {
            // A number: a changed title gives the same one, and the cells stay.
            model: row.columnCount
            delegate: PassageCellView {
                required property int index

                width: row.columnWidth
                height: row.height
                cell: row.passages.cell(index)
                isLit: row.isCurrent
            }
        }
    }

    Rectangle {
        x: row.titleX
        width: row.titleWidth
        height: row.height
        color: row.isCurrent ? Colors.pvRedDim : Colors.pvBlack

        Rectangle {
            visible: row.isCurrent
            width: 5
            height: parent.height
            color: Colors.pvRed
        }
        PVText {
            id: number

            x: 20
            width: 28
            text: row.passages.number
            size: 13
            weight: Font.DemiBold
            color: row.isCurrent ? Colors.pvPaper : Colors.pvPaperDim
            opacity: row.isPast ? 0.6 : 1
            anchors.verticalCenter: parent.verticalCenter
            Accessible.ignored: true
        }
        PVText {
            x: 48
            width: parent.width - x - 10
            text: row.passages.title
            size: 15
            weight: row.isCurrent ? Font.Bold : Font.Medium
            opacity: row.isPast ? 0.6 : 1
            elide: Text.ElideRight
            anchors.verticalCenter: parent.verticalCenter
            Accessible.ignored: true
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Colors.pvLine
        opacity: 0.5
    }
}
