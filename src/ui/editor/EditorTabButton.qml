import QtQuick
import QtQuick.Templates as T
import Tessivo.Style
import Tessivo.Ui

/** One tab of the editor. */
T.TabButton {
    id: button

    /** Not `text`, in which an & makes a keyboard shortcut. */
    required property string label

    checkable: false  // the editor tells which tab is shown
    focusPolicy: Qt.TabFocus
    horizontalPadding: 16
    verticalPadding: 10
    hoverEnabled: true
    opacity: enabled ? 1 : 0.4
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding

    Accessible.role: Accessible.PageTab
    Accessible.name: label
    Accessible.selected: checked
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: PVText {
        text: button.label
        size: 12
        weight: Font.DemiBold
        color: button.checked ? Colors.pvPaper : button.hovered ? Colors.pvPaperDim : Colors.pvPaperFaint
        Accessible.ignored: true
    }
    background: Rectangle {
        color: "transparent"
        border.width: button.activeFocus ? 1 : 0
        border.color: Colors.pvAmber

        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 2
            color: button.checked ? Colors.pvRed : "transparent"
        }
    }
}
