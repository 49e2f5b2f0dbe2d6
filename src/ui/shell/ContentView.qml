import QtQuick
import Tessivo.Ui

/** The active show, or the list of all shows without one. */
FocusScope {
    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: ShellViewModel.activeShowId === "" ? home : show
    }

    Component {
        id: home

        HomeView {
            focus: true
        }
    }

    Component {
        id: show

        EditorView {
            showId: ShellViewModel.activeShowId
        }
    }
}
