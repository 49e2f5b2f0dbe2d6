import QtQuick

/** Where something is shown once it is made: at once, or when it is due. */
Loader {
    property bool atOnce: false
    property bool due: false

    active: atOnce || due
}
