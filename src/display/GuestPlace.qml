import QtQuick
import Tessivo.Kit

/** The card of a guest of the current song; of a choir, those on the first lines at once. */
DuePlace {
    required property guestInfo modelData
    required property int index
    property real maximumWidth: 600
    property real lineWidth: 1.5

    atOnce: index < guestsAtOnce
    // By name, as for the songs to come.
    Component.onCompleted: setSource("GuestCard.qml", {
        modelData: Qt.binding(() => modelData),
        maximumWidth: Qt.binding(() => maximumWidth),
        "border.width": Qt.binding(() => lineWidth)
    })
}
