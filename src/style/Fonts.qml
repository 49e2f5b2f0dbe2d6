pragma Singleton

import QtQuick

/** Families and the text sizes that have a name. Sizes are logical pixels. */
QtObject {
    readonly property string text: "Inter"
    /** Digits that don't dance when they change. */
    readonly property string digits: "JetBrains Mono"

    readonly property int caption: 12
    readonly property int smallCaption: 11
    readonly property int subheadline: 15
}
