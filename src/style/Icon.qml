import QtQuick
import Tessivo.Style

/** One glyph of the icon font. An assistive tool reads the control that it stands in. */
Text {
    property int size: 16

    font.family: Icons.family
    font.pixelSize: size
    color: Colors.pvPaperDim
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
