pragma Singleton

import QtQuick

/** The icon font, embedded in the program, and the glyphs in use. */
QtObject {
    id: icons

    readonly property string family: icons.loader.name
    readonly property FontLoader loader: FontLoader {
        source: "qrc:/fonts/icons.ttf"
    }

    readonly property string add: "\uf415"
    readonly property string alert: "\uf026"
    readonly property string arrowUpRight: "\uf05c"
    readonly property string check: "\uf5e1"
    readonly property string chevronDown: "\uf140"
    readonly property string chevronRight: "\uf142"
    readonly property string clear: "\uf156"
    readonly property string controls: "\uf62e"
    readonly property string dragHandle: "\uf35c"
    readonly property string home: "\uf2dc"
    readonly property string importSheet: "\uf1da"
    readonly property string lock: "\uf33e"
    readonly property string minus: "\uf374"
    readonly property string refresh: "\uf450"
    readonly property string remove: "\uf15a"
    readonly property string resume: "\uf40d"
    readonly property string screen: "\uf379"
    readonly property string setlist: "\uf411"
    readonly property string trash: "\uf1c0"
    readonly property string update: "\uf047"
    readonly property string wifi: "\uf5a9"
}
