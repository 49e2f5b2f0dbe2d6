import QtQuick
import Tessivo.Style

/** Text as every screen shows it, readable by assistive tools. `size` is in logical pixels. */
Text {
    property int size: Fonts.subheadline
    property int weight: Font.Normal
    property bool digits: false

    font.family: digits ? Fonts.digits : Fonts.text
    font.pixelSize: size
    font.weight: weight
    color: Colors.pvPaper
    textFormat: Text.PlainText

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
