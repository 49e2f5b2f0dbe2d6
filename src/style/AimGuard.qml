import QtQuick

/** Lies over a button that may come under a resting pointer, as a row does that slides up when the
    one above goes. For as long as a double click takes, a press was aimed at what stood there
    before: it is taken, and nothing happens. Keys and assistive tools press the button itself. */
MouseArea {
    /** What the operator aims at: where the row is, or what the button does. */
    required property var aim

    anchors.fill: parent
    enabled: settling.running
    onAimChanged: settling.restart()

    Timer {
        id: settling

        interval: Application.styleHints.mouseDoubleClickInterval
        running: true
    }
}
