import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Tells the operator quietly who follows, and in amber what they may suffer from. */
Row {
    id: line

    /** Null when this computer is no admin. */
    required property AdminNetworkViewModel network

    visible: network !== null && network.status === AdminNetworkViewModel.Broadcasting
    spacing: 10

    PVText {
        text: line.network ? line.network.trouble : ""
        visible: text !== ""
        size: Fonts.caption
        weight: Font.DemiBold
        color: Colors.pvAmber
    }
    PVText {
        text: line.network ? line.network.stations : ""
        size: Fonts.caption
        color: Colors.pvPaperDim
    }
}
