import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessivo.Style

/** A button: an icon, a text or both. Reached with Tab; a click leaves the keyboard where it was,
    and Return presses it. An icon alone needs a `tip`, which is also its accessible name. */
T.Button {
    id: button

    enum Look {
        Outlined,
        Filled,
        Plain
    }

    property int look: PVButton.Outlined
    /** What it says. An & in it is just that, while one in `text` makes a keyboard shortcut. */
    property string label: text
    property string glyph: ""
    property int glyphSize: 16
    property int textSize: Fonts.caption
    property int textWeight: Font.DemiBold
    property string tip: ""
    property color fill: Colors.pvRed
    property color foreground: look === PVButton.Filled ? "white" : Colors.pvPaperDim

    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(look === PVButton.Plain ? 0 : 30, implicitContentHeight + topPadding + bottomPadding)
    horizontalPadding: look === PVButton.Plain ? 6 : look === PVButton.Filled ? 16 : 12
    verticalPadding: look === PVButton.Plain ? 6 : look === PVButton.Filled ? 8 : 7
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: button.label || button.tip
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    PVToolTipOnDemand {
        wanted: button.hovered && button.tip !== ""
        text: button.tip
    }

    contentItem: RowLayout {
        spacing: 0

        Item {
            Layout.fillWidth: true
        }
        Icon {
            visible: button.glyph !== ""
            text: button.glyph
            size: button.glyphSize
            color: button.foreground
        }
        PVText {
            visible: text !== ""
            text: button.label
            size: button.textSize
            weight: button.textWeight
            color: button.foreground
            Accessible.ignored: true
            elide: Text.ElideRight
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
            Layout.leftMargin: button.glyph !== "" ? 7 : 0
        }
        Item {
            Layout.fillWidth: true
        }
    }

    background: Rectangle {
        radius: button.look === PVButton.Filled ? 6 : 5
        color: {
            if (button.look === PVButton.Filled) {
                return button.down ? Qt.darker(button.fill, 1.4) : button.hovered ? Qt.darker(button.fill, 1.15) : button.fill;
            }
            return button.down ? Colors.pvLine : button.hovered ? Colors.pvBlack3 : "transparent";
        }
        border.width: button.look === PVButton.Filled && button.activeFocus ? 2 : button.look === PVButton.Outlined || button.activeFocus ? 1 : 0
        // Amber can't be told from red.
        border.color: !button.activeFocus ? Colors.pvLine : button.look === PVButton.Filled ? Colors.pvPaper : Colors.pvAmber
    }
}
