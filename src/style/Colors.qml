pragma Singleton

import QtQuick

/** The palette: opaque sRGB colours, the same on every screen. */
QtObject {
    readonly property color pvBlack: Qt.rgba(0.039, 0.035, 0.031, 1)
    readonly property color pvBlack2: Qt.rgba(0.075, 0.071, 0.067, 1)
    readonly property color pvBlack3: Qt.rgba(0.11, 0.102, 0.094, 1)
    readonly property color pvLine: Qt.rgba(0.173, 0.161, 0.145, 1)
    readonly property color pvRed: Qt.rgba(0.91, 0.2, 0.165, 1)
    readonly property color pvRedDim: Qt.rgba(0.361, 0.09, 0.078, 1)
    readonly property color pvAmber: Qt.rgba(0.91, 0.635, 0.227, 1)
    readonly property color pvPaper: Qt.rgba(0.925, 0.902, 0.855, 1)
    readonly property color pvPaperDim: Qt.rgba(0.604, 0.58, 0.541, 1)
    readonly property color pvPaperFaint: Qt.rgba(0.353, 0.337, 0.31, 1)
    readonly property color pvGreen: Qt.rgba(0.31, 0.58, 0.408, 1)

    /** `color` at `opacity`, for tinted surfaces. */
    function withOpacity(color: color, opacity: real): color {
        return Qt.rgba(color.r, color.g, color.b, opacity);
    }
}
