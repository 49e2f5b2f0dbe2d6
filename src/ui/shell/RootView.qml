import QtQuick
import Tessivo.Display
import Tessivo.Ui

/** The main window's content: the choice of a launch mode, then the chosen one. A mode is made anew
    each time it is chosen, and gone when it is left. */
FocusScope {
    id: root

    enum LaunchMode {
        None,
        Admin,
        Affichage
    }

    property int mode: RootView.None
    /** Of the admin mode; null in any other. */
    property AdminNetworkViewModel network: null
    /** The passages of the show that this computer drives, or follows as a station. */
    function passages(): PassagesContent {
        const station = stationLoader.item as ReceiverRootView;
        if (station) {
            return station.receiver.passages;
        }
        return LocalPassagesViewModel.content;
    }

    /** How long nothing was heard of the admin that this station follows, in words. */
    function silence(): string {
        const station = stationLoader.item as ReceiverRootView;
        return station ? station.receiver.silence : "";
    }

    function begin(chosen: int): void {
        ResumeViewModel.begin(chosen === RootView.Admin);
        mode = chosen;
    }
    function lead() {
        begin(RootView.Admin);
    }
    function leaveMode() {
        mode = RootView.None;
        ResumeViewModel.leave();
    }

    LaunchModeChoiceView {
        anchors.fill: parent
        visible: root.mode === RootView.None
        focus: visible
        onChoose: mode => root.begin(mode)
        onResume: {
            const offered = ResumeViewModel.leads ? RootView.Admin : RootView.Affichage;
            ResumeViewModel.resume();
            root.mode = offered;
        }
    }

    Loader {
        anchors.fill: parent
        active: root.mode === RootView.Admin
        focus: active
        sourceComponent: AdminRootView {
            focus: true
        }
        onLoaded: {
            const admin = item as AdminRootView;
            admin.changeMode.connect(root.leaveMode);
            root.network = admin.network;
        }
    }

    Loader {
        id: stationLoader

        anchors.fill: parent
        active: root.mode === RootView.Affichage
        focus: active
        sourceComponent: ReceiverRootView {}
        onLoaded: {
            const station = item as ReceiverRootView;
            station.changeMode.connect(root.leaveMode);
            station.takenOver.connect(root.lead);
        }
    }
}
