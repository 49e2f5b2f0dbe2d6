import QtQuick
import Tessivo.Style

/** Digits that run. An assistive tool reads them when it is asked to; told of each change, it would
    speak of nothing else. */
PVText {
    /** What the digits are. */
    required property string what

    digits: true
    Accessible.name: what
    Accessible.description: text
}
