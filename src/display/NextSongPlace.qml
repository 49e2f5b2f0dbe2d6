import QtQuick
import Tessivo.Kit

/** The row of a song still to come, once it is made: the first at once, another when it is due. */
Loader {
    required property songInfo song
    required property int index
    property bool urgent: false
    property bool due: false

    readonly property bool first: index === 0

    active: first || due
    // By name, since a Loader of Qt 6.4 makes no component that is bound to where it is written.
    Component.onCompleted: setSource("NextSongRow.qml", {
        song: Qt.binding(() => song),
        first: Qt.binding(() => first),
        urgent: Qt.binding(() => first && urgent)
    })
}
