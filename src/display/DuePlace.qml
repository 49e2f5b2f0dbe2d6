import QtQuick

/** Where something is shown once it is made: at once, or when it is due. */
Loader {
    /** Of one song; a choir has more. */
    readonly property int guestsAtOnce: 15
    property bool atOnce: false
    property bool due: false

    active: atOnce || due
}
