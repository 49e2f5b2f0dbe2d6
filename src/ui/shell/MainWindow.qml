import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style
import Tessivo.Ui

/** The main window: the choice of a launch mode and all that follows from it. */
ApplicationWindow {
    id: window

    property alias launchMode: root.mode
    readonly property bool isLocked: ShellViewModel.locked && root.mode === RootView.Admin

    title: "Tessivo"
    width: 1180
    height: 820
    // The editor needs 700 × 500 beside the menu, the import sheet 600 × 520 and its margin.
    minimumWidth: 720
    minimumHeight: 544
    visible: true
    color: Colors.pvBlack

    palette {
        window: Colors.pvBlack2
        windowText: Colors.pvPaper
        base: Colors.pvBlack2
        text: Colors.pvPaper
        button: Colors.pvBlack3
        buttonText: Colors.pvPaper
        mid: Colors.pvLine
        dark: Colors.pvPaper
        light: Colors.pvLine
        highlight: Colors.pvRedDim
        highlightedText: Colors.pvPaper
    }

    menuBar: MenuBar {
        id: bar

        // A station on a wall shows the stage display and nothing else.
        visible: root.mode !== RootView.Affichage || window.visibility !== Window.FullScreen

        background: Rectangle {
            color: Colors.pvBlack2
        }
        delegate: MenuBarItem {
            id: barItem

            padding: 8
            Accessible.name: (contentItem as PVText).text
            contentItem: PVText {
                text: barItem.text.replace("&", "")
                size: 13
                Accessible.ignored: true
            }
            background: Rectangle {
                color: barItem.hovered || barItem.menu.visible ? Colors.pvLine : "transparent"
            }
        }

        FileMenu {
            onPaperRequested: form => paper.ask(form)
        }
        EditMenu {}
        WindowMenu {
            onFullScreenToggled: fullScreen.toggle()
            onPassagesRequested: {
                passagesWindow.active = true;
                (passagesWindow.item as PassagesWindow).present();
            }
        }
        HelpMenu {
            onGuideRequested: {
                guideWindow.active = true;
                (guideWindow.item as GuideWindow).present();
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Rectangle {
            // A station modifies nothing.
            visible: !ShellViewModel.keepsShows && root.mode !== RootView.Affichage
            color: Colors.pvRedDim
            Layout.fillWidth: true
            implicitHeight: notice.height + 16

            PVText {
                id: notice

                anchors.centerIn: parent
                width: parent.width - 32
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                size: 13
                weight: Font.DemiBold
                text: "Les modifications faites ici ne seront pas conservées\u00A0: Tessivo est déjà ouvert sur cet ordinateur, ou le dossier de ses préférences n'est pas accessible."
            }
        }

        LockBar {
            visible: window.isLocked
            Layout.fillWidth: true
        }

        RootView {
            id: root

            focus: true
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }

    // Beside the menus: there it covers nothing and moves nothing.
    Row {
        parent: bar
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 16

        UndoOffer {
            anchors.verticalCenter: parent.verticalCenter
        }
        StationsLine {
            anchors.verticalCenter: parent.verticalCenter
            network: root.network
        }
    }

    DoubleClickGuard {}

    Loader {
        id: displayWindow

        active: false
        sourceComponent: DisplayWindow {}
        onLoaded: ResumeViewModel.keepPlace(item as DisplayWindow, "display")
    }

    Loader {
        id: passagesWindow

        active: false
        sourceComponent: PassagesWindow {}
        onLoaded: {
            (item as PassagesWindow).content = Qt.binding(() => root.passages());
            (item as PassagesWindow).silence = Qt.binding(() => root.silence());
            ResumeViewModel.keepPlace(item as PassagesWindow, "passages");
        }
    }

    Loader {
        id: guideWindow

        active: false
        sourceComponent: GuideWindow {}
    }

    Connections {
        target: ResumeViewModel

        function onWindowWanted(name: string, screen: string, fullScreen: bool): void {
            if (name === "main") {
                ResumeViewModel.putInPlace(window, screen, fullScreen);
            } else if (name === "display") {
                displayWindow.active = true;
                ResumeViewModel.putInPlace(displayWindow.item as DisplayWindow, screen, fullScreen);
            } else if (name === "passages") {
                passagesWindow.active = true;
                ResumeViewModel.putInPlace(passagesWindow.item as PassagesWindow, screen, fullScreen);
            }
            // The keys are the operator's, whatever has opened.
            window.requestActivate();
        }
    }

    Connections {
        target: ShellViewModel

        function onDisplayRequested() {
            displayWindow.active = true;
            (displayWindow.item as DisplayWindow).present();
        }
        function onUpdateRequested() {
            update.open();
        }
        function onSummoned() {
            window.raise();
            window.requestActivate();
        }
        function onShowOpened(name: string): void {
            if (root.mode !== RootView.Admin) {
                news.tell("Show ouvert", "«\u00A0" + name + "\u00A0» est ouvert. Choisis le mode Admin pour le voir.");
            }
        }
        function onFileRefused(reason: string): void {
            news.tell("Fichier de show", reason);
        }
        function onJournalUnopened(file: string): void {
            news.tell("Journal", "Aucun programme de cet ordinateur n'ouvre le journal. Il est ici\u00A0: " + file);
        }
    }

    UpdateDialog {
        id: update
    }

    PaperDialogs {
        id: paper
    }

    PVDialog {
        id: news

        function tell(about: string, what: string): void {
            title = about;
            message = what;
            open();
        }

        action: "OK"
        cancels: false
    }

    PVDialog {
        id: leaving

        title: "Quitter Tessivo ?"
        message: "La vue live est verrouillée. Quitter arrête le timecode, l'affichage et ce que suivent les stations."
        action: "Quitter"
        destructive: true
        onAccepted: Qt.quit()
    }

    FullScreenShortcut {
        id: fullScreen

        target: window
        sequences: ["Ctrl+Meta+F"]  // the menu has the other
        escapes: root.mode === RootView.Affichage
    }

    Shortcut {
        sequence: "F10"
        onActivated: (bar.itemAt(0) as MenuBarItem).triggered()
    }

    // Closing the operator's window ends the program, whatever the stage window does.
    onClosing: close => {
        if (isLocked) {
            close.accepted = false;
            leaving.open();
        } else {
            Qt.quit();
        }
    }
    Component.onCompleted: {
        ShellViewModel.checkForUpdateInformation();
        ResumeViewModel.keepPlace(window, "main");
    }
}
