import QtQuick
import Tessivo.Display
import Tessivo.Style

/** One microphone in one song. Shape, thickness and words say what a colour alone couldn't. */
Item {
    id: view

    required property passageCell cell
    /** Whether the song is the current one, whose ground is brighter. */
    required property bool isLit

    readonly property bool isUsed: cell.names !== ""
    readonly property int axis: 16

    /** Of a line, above or below the dot: that of a past song is half transparent. */
    readonly property real lineHeight: (height - (isUsed ? dot.height : 0)) / 2

    Rectangle {
        visible: view.cell.lineAbove > 0
        x: view.axis - width / 2
        width: view.cell.lineAbove
        height: view.lineHeight
        color: Colors.pvAmber
    }
    Rectangle {
        visible: view.cell.lineBelow > 0
        x: view.axis - width / 2
        y: view.height - height
        width: view.cell.lineBelow
        height: view.lineHeight
        color: Colors.pvAmber
    }
    Rectangle {
        id: dot

        visible: view.isUsed
        x: view.axis - width / 2
        width: view.cell.isCollision ? 18 : 12
        height: width
        radius: view.cell.isCollision ? 3 : width / 2
        color: view.cell.isCollision ? Colors.pvRed : view.cell.isChange ? Colors.pvAmber : Colors.pvPaper
        anchors.verticalCenter: parent.verticalCenter

        PVText {
            anchors.centerIn: parent
            visible: view.cell.isCollision
            text: "!"
            size: 13
            weight: Font.Bold
            Accessible.ignored: true
        }
    }
    Column {
        visible: view.isUsed
        x: view.axis + 14
        width: view.width - x - 4
        anchors.verticalCenter: parent.verticalCenter

        PVText {
            width: parent.width
            text: view.cell.names
            size: 13
            wrapMode: Text.Wrap
            maximumLineCount: 2
            weight: view.cell.word !== "" ? Font.DemiBold : Font.Normal
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        PVText {
            visible: text !== ""
            width: parent.width
            text: view.cell.word
            size: Fonts.smallCaption
            weight: view.cell.lineAbove > 2 || view.cell.isCollision ? Font.Bold : Font.Normal
            color: view.cell.isChange ? Colors.pvAmber : view.isLit ? Colors.pvPaper : Colors.pvPaperDim
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
}
