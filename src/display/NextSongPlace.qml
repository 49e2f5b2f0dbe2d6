import QtQuick
import Tessivo.Kit

/** The row of a song still to come. All but the first are made when there is time: a show may have more
    of them, with more guests, than a screen can show. */
Loader {
    required property songInfo song
    required property int index
    property bool urgent: false

    readonly property bool first: index === 0

    asynchronous: !first
    Component.onCompleted: setSource("NextSongRow.qml", {
        song: Qt.binding(() => song),
        first: Qt.binding(() => first),
        urgent: Qt.binding(() => first && urgent)
    })
}
