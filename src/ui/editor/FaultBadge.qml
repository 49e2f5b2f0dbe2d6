import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Says in a word or two that something is wrong with a song's equipment, and in full what. */
SongBadge {
    id: badge

    required property string faultText
    required property bool isCollision

    digits: false
    weight: Font.DemiBold
    color: isCollision ? Colors.pvPaper : Colors.pvPaperDim
    fill: isCollision ? Colors.pvRedDim : Colors.pvBlack3
    Accessible.description: faultText

    HoverHandler {
        id: pointer
    }
    PVToolTipOnDemand {
        wanted: pointer.hovered
        text: badge.faultText
    }
}
