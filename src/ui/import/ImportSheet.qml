import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Tessivo.Style
import Tessivo.Ui

/** The import screen as a sheet over the window, made anew each time it opens. It takes
    the whole window once there is a table to look at. */
Popup {
    id: sheet

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(parent.width - 24, view.hasWorkbook ? parent.width : 760) : 0
    height: parent ? Math.min(parent.height - 24, view.hasWorkbook ? parent.height : 560) : 0
    padding: 0
    modal: true
    focus: true
    // A stray Escape isn't to throw the chosen roles away.
    closePolicy: view.hasWorkbook ? Popup.NoAutoClose : Popup.CloseOnEscape

    T.Overlay.modal: Rectangle {
        color: Colors.withOpacity(Colors.pvBlack, 0.7)
    }
    background: Rectangle {
        radius: 10
        color: Colors.pvBlack
        border.color: Colors.pvLine
    }

    Loader {
        id: view

        readonly property bool hasWorkbook: (item as ShowImportView)?.hasWorkbook ?? false

        anchors.fill: parent
        active: sheet.visible
        focus: true
        sourceComponent: ShowImportView {
            focus: true
        }
        onLoaded: (item as ShowImportView).done.connect(sheet.close)
    }
}
