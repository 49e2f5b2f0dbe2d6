pragma Singleton

import QtQuick

/** The icon font, embedded in the program, and the glyphs in use. */
QtObject {
    id: icons

    readonly property string family: icons.loader.name
    readonly property FontLoader loader: FontLoader {
        source: "qrc:/fonts/icons.ttf"
    }

    readonly property string refresh: "\uf450"
    readonly property string screen: "\uf379"
    readonly property string folder: "\uf256"
    readonly property string chevronDown: "\uf140"
    readonly property string setlist: "\uf411"
}
