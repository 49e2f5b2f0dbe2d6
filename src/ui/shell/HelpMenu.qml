import QtQuick.Controls.Basic
import Tessivo.Style

/** What helps whoever is stuck, in a show or before it. */
PVMenu {
    id: menu

    signal guideRequested

    title: "&Aide"

    Action {
        text: "Guide de Tessivo"
        shortcut: "F1"
        onTriggered: menu.guideRequested()
    }
}
