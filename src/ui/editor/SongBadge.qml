import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** A small fact about a song beside its title. */
PVText {
    id: badge

    property color fill: "transparent"

    visible: text !== ""
    size: 11
    digits: true
    leftPadding: 6
    rightPadding: 6
    topPadding: 2
    bottomPadding: 2

    Rectangle {
        anchors.fill: parent
        z: -1
        radius: 3
        color: badge.fill
    }
}
