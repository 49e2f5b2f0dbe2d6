import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** A scroll bar that is there as long as there is more than can be seen. */
ScrollBar {
    id: bar

    policy: size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    padding: 2

    contentItem: Rectangle {
        implicitWidth: 4
        implicitHeight: 4
        radius: 2
        color: bar.pressed || bar.hovered ? Colors.pvPaperFaint : Colors.pvLine
    }
}
