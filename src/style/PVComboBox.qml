pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessivo.Style

/** Chooses one entry of a list of texts, or of any model with a `delegate` of its own. What is chosen
    changes in the open list only: no stray key or wheel changes it. Opened with the mouse, too, the
    chooser takes the keyboard, and keeps it once the list is closed. */
ComboBox {
    id: chooser

    property int popupWidth: width
    /** Shown faintly while nothing is chosen. */
    property string placeholder: ""
    /** Shown in place of entries when there are none. */
    property string emptyText: ""
    property int size: 13

    focusPolicy: Qt.TabFocus
    implicitHeight: 30
    leftPadding: 10
    rightPadding: 26

    Accessible.role: Accessible.ComboBox
    Accessible.description: displayText

    Keys.onPressed: event => {
        if (!popup.visible) {
            const opens = event.key === Qt.Key_Up || event.key === Qt.Key_Down;
            if (opens) {
                popup.open();
            }
            event.accepted = opens || /[^\x00-\x20\x7f]/.test(event.text);
        }
    }

    contentItem: PVText {
        text: chooser.displayText || chooser.placeholder
        color: chooser.displayText ? Colors.pvPaper : Colors.pvPaperDim
        size: chooser.size
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
    PVToolTipOnDemand {
        wanted: chooser.hovered && (chooser.contentItem as PVText).truncated
        text: chooser.displayText
    }

    indicator: Icon {
        text: Icons.chevronDown
        x: chooser.width - width - 8
        height: chooser.height
    }
    background: Rectangle {
        radius: 5
        color: chooser.down || chooser.hovered ? Colors.pvLine : Colors.pvBlack3
        border.width: chooser.activeFocus ? 2 : 1
        border.color: chooser.activeFocus ? Colors.pvAmber : Colors.outline
    }

    delegate: PVComboEntry {
        label: chooser.textAt(index)
        current: index === chooser.currentIndex
    }

    popup: Popup {
        y: chooser.height + 4
        width: chooser.popupWidth
        height: Math.min(contentItem.implicitHeight + 8, 400)
        padding: 4
        margins: 8
        focus: true
        transformOrigin: Popup.TopLeft
        onAboutToShow: {
            scale = chooser.mapToItem(null, 1, 0).x - chooser.mapToItem(null, 0, 0).x;  // as it is drawn
            chooser.forceActiveFocus();
        }
        onActiveFocusChanged: {
            if (!activeFocus) {
                close();
            }
        }

        contentItem: ListView {
            clip: true
            focus: true
            keyNavigationEnabled: false
            Keys.forwardTo: [chooser]
            implicitHeight: chooser.count > 0 ? contentHeight : 32
            model: chooser.popup.visible ? chooser.delegateModel : null
            currentIndex: chooser.highlightedIndex
            ScrollIndicator.vertical: ScrollIndicator {}

            PVText {
                visible: chooser.count === 0
                text: chooser.emptyText
                size: Fonts.caption
                color: Colors.pvPaperDim
                padding: 8
            }
        }
        background: Rectangle {
            radius: 6
            color: Colors.pvBlack3
            border.color: Colors.pvLine
        }
    }
}
