import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** A scroll bar that is there as long as there is more than can be seen. */
ScrollBar {
    id: bar

    policy: size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    padding: 2

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed || bar.hovered ? Colors.pvPaperDim : Colors.pvPaperFaint
    }
}
