import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style
import Tessivo.Ui

/** How timecode moves the cursor. */
PVMenu {
    title: "Suivi du timecode"
    width: 280

    ActionGroup {
        id: ways
    }
    Action {
        ActionGroup.group: ways
        text: "Au départ de chaque morceau"
        checkable: true
        checked: !LineHealthViewModel.followsPosition
        onTriggered: LineHealthViewModel.followsPosition = false
    }
    Action {
        ActionGroup.group: ways
        text: "Selon la position"
        checkable: true
        checked: LineHealthViewModel.followsPosition
        onTriggered: LineHealthViewModel.followsPosition = true
    }
    MenuSeparator {}
    Action {
        text: "Compter 30 images par seconde"
        checkable: true
        checked: LineHealthViewModel.countsThirty
        onTriggered: LineHealthViewModel.countsThirty = checked
    }
}
