import QtQuick
import Tessivo.Kit

/** The row of a song still to come: the next one's at once, unless it has a choir. */
DuePlace {
    required property songInfo song
    required property int index
    property bool urgent: false

    readonly property bool first: index === 0

    atOnce: first && song.guests.length <= guestsAtOnce
    // By name, since a Loader of Qt 6.4 makes no component that is bound to where it is written.
    Component.onCompleted: setSource("NextSongRow.qml", {
        song: Qt.binding(() => song),
        first: Qt.binding(() => first),
        urgent: Qt.binding(() => first && urgent)
    })
}
