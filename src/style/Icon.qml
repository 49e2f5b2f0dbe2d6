import QtQuick
import Tessivo.Style

/** One glyph of the icon font. Its drawing fills about four fifths of its `size`, which is therefore
    a little above that of the words beside it. An assistive tool reads the control around it. */
Text {
    property int size: 16

    font.family: Icons.family
    font.pixelSize: size
    color: Colors.pvPaperDim
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
