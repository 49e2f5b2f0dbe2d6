// In Qt 6.4 a bound component can't be loaded by a Loader, so ids are reached unbound.
// qmllint disable unqualified
import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** A one-line text field. Its accessible name is the placeholder unless it is given another. */
TextField {
    id: field

    property int size: 13
    property int radius: 4
    /** False for a field that lies flat in its row until somebody types in it. */
    property bool boxed: true
    /** True while what is typed doesn't count yet. */
    property bool pending: false
    /** Whether Ctrl+Z takes back what was typed here. A field with nothing in it of its own leaves
        the keys to the program's menu. */
    property bool ownUndo: text !== ""
    readonly property bool truncated: !activeFocus && contentWidth > width - leftPadding - rightPadding

    /** Shows a text from elsewhere, a long one from its beginning. */
    function show(stored: string): void {
        if (text !== stored) {
            text = stored;
            if (!activeFocus) {
                cursorPosition = 0;
            }
        }
    }

    // The caret stays for when the window comes back; what can be seen is the beginning.
    onActiveFocusChanged: ensureVisible(activeFocus ? cursorPosition : 0)

    // A field is one line: a pasted break would be one on stage.
    onTextEdited: {
        if (/[\n\r\u2028\u2029]/.test(text)) {
            const oneLine = part => part.replace(/[\n\r\u2028\u2029]+$/, "").replace(/\s*[\n\r\u2028\u2029]+\s*/g, " / ");
            const caret = oneLine(text.slice(0, cursorPosition)).length;
            text = oneLine(text);
            cursorPosition = caret;
        }
    }

    implicitHeight: Math.max(boxed ? 30 : 0, contentHeight + topPadding + bottomPadding)
    color: Colors.pvPaper
    placeholderTextColor: Colors.pvPaperDim
    selectionColor: Colors.pvRedDim
    selectedTextColor: Colors.pvPaper
    selectByMouse: true
    font.family: Fonts.text
    font.pixelSize: size
    leftPadding: 8
    rightPadding: 8
    topPadding: 5
    bottomPadding: 5

    Accessible.role: Accessible.EditableText
    Accessible.name: field.placeholderText

    background: Rectangle {
        radius: field.radius
        color: field.boxed || field.activeFocus ? Colors.pvBlack3 : "transparent"
        border.width: field.activeFocus ? 2 : field.boxed ? 1 : 0
        border.color: field.activeFocus ? Colors.pvAmber : field.hovered ? Colors.pvPaperDim : Colors.outline
    }

    Loader {
        active: field.truncated
        anchors.right: parent.right
        anchors.rightMargin: 1
        anchors.verticalCenter: parent.verticalCenter
        sourceComponent: PVText {
            text: "…"
            size: field.size
            leftPadding: 2
            rightPadding: 4
            Accessible.ignored: true

            Rectangle {
                z: -1
                anchors.fill: parent
                color: field.boxed ? Colors.pvBlack3 : Colors.pvBlack2
            }
        }
    }

    PVToolTipOnDemand {
        wanted: field.pending ? field.hovered || field.activeFocus : field.hovered && field.truncated
        text: field.pending ? "Entrée pour valider" : field.text
        above: field.pending
    }
}
