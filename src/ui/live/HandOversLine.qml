import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** What changes hands before the next song. What doesn't fit is read in the tool tip. */
PVText {
    id: line

    size: 13
    weight: Font.DemiBold
    color: Colors.pvAmber
    elide: Text.ElideRight

    HoverHandler {
        id: pointer
    }
    PVToolTipOnDemand {
        wanted: pointer.hovered && line.truncated
        text: line.text.split("   ·   ").join("\n")
    }
}
