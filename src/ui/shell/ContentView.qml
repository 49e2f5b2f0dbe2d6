import QtQuick
import Tessivo.Ui

/** The active show, or the list of all shows without one. Each show has an editor of its own: what
    is half typed in one doesn't stand in another, and is there when the show is opened again. */
FocusScope {
    id: content

    property int firstTab: EditorView.Setlist
    readonly property string showId: ShellViewModel.activeShowId
    readonly property var drafts: ({})

    function present(): void {
        if (showId === "") {
            page.setSource("../shows/HomeView.qml", {
                focus: true
            });
            return;
        }
        drafts[showId] = drafts[showId] ?? {};
        page.setSource("../editor/EditorView.qml", {
            focus: true,
            showId: showId,
            drafts: drafts[showId],
            selectedTab: (page.item as EditorView)?.selectedTab ?? firstTab
        });
    }

    Component.onCompleted: present()
    onShowIdChanged: present()

    Loader {
        id: page

        anchors.fill: parent
        focus: true
    }
}
