import QtQuick
import Tessivo.Style

/** The look of a card: put it behind the content. */
Rectangle {
    color: Colors.pvBlack2
    radius: 6
    border.width: 1
    border.color: Colors.pvLine
}
