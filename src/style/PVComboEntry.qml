import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** One entry of an open chooser. */
ItemDelegate {
    id: entry

    required property int index
    /** Not `text`, in which an & makes a keyboard shortcut. */
    property string label: ""
    property bool current: false

    width: ListView.view.width
    height: 32
    highlighted: ListView.isCurrentItem
    Accessible.name: label

    contentItem: PVText {
        text: entry.label
        size: 13
        color: entry.current ? Colors.pvAmber : Colors.pvPaper
        weight: entry.current ? Font.Bold : Font.Normal
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: 4
        color: entry.highlighted ? Colors.pvLine : "transparent"
        border.width: entry.highlighted ? 1 : 0
        border.color: Colors.pvAmber
    }
}
