import QtQuick
import QtQuick.Templates as T
import Tessivo.Style

/** Of a card on the choice screen. */
Rectangle {
    required property T.Button card

    radius: 10
    color: card.down ? Colors.pvLine : card.hovered ? Colors.pvBlack3 : Colors.pvBlack2
    border.width: 1
    border.color: card.activeFocus ? Colors.pvAmber : Colors.pvLine
}
