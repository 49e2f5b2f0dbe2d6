import QtQuick
import Tessivo.Ui

/** The active show, or what stands there without one. */
FocusScope {
    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: Desk.activeShowId === "" ? noShow : show
    }

    Component {
        id: noShow

        NoShowView {}
    }

    Component {
        id: show

        EditorView {
            showId: Desk.activeShowId
        }
    }
}
