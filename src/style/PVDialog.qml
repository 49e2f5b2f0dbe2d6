import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Tessivo.Style

/** Asks before something is done: a title, a message or a text field, "Annuler" and the action.
    Return does it unless it destroys something, Escape cancels. */
Dialog {
    id: dialog

    required property string action
    property string message: ""
    /** What it is about, by its name. */
    property string subject: ""
    /** A text to be asked for is edited in a field with this placeholder. */
    property string placeholder: ""
    property alias value: field.text
    /** True when the action can't be undone: a hasty Return then cancels. */
    property bool destructive: false
    /** False when there is nothing to cancel. */
    property bool cancels: true

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: 360
    modal: true
    focus: true
    padding: 20
    topPadding: 12
    closePolicy: Popup.CloseOnEscape

    onAboutToShow: {
        if (placeholder !== "") {
            field.forceActiveFocus();
            field.selectAll();
        } else {
            (destructive ? cancel : confirm).forceActiveFocus(Qt.TabFocusReason);
        }
    }

    T.Overlay.modal: Rectangle {
        color: Colors.withOpacity(Colors.pvBlack, 0.7)
    }

    background: Rectangle {
        radius: 10
        color: Colors.pvBlack2
        border.color: Colors.pvLine
    }

    header: PVText {
        text: dialog.title
        size: 15
        weight: Font.DemiBold
        padding: 20
        bottomPadding: 0
        wrapMode: Text.Wrap
    }

    Column {
        width: dialog.availableWidth
        spacing: 16

        PVText {
            visible: text !== ""
            text: dialog.subject
            weight: Font.DemiBold
            width: parent.width
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 2
        }
        PVText {
            visible: text !== ""
            text: dialog.message
            size: 13
            color: Colors.pvPaperDim
            width: parent.width
            wrapMode: Text.Wrap
        }
        PVTextField {
            id: field

            visible: dialog.placeholder !== ""
            placeholderText: dialog.placeholder
            width: parent.width
            onAccepted: dialog.accept()
        }
        Row {
            anchors.right: parent.right
            spacing: 8

            PVButton {
                id: cancel

                visible: dialog.cancels
                text: "Annuler"
                height: confirm.height
                onClicked: dialog.reject()
            }
            PVButton {
                id: confirm

                text: dialog.action
                look: PVButton.Filled
                onClicked: dialog.accept()
            }
        }
    }
}
