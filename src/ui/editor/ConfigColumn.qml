pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** One list of labels: each can be changed or removed, and new ones are added below. */
ColumnLayout {
    id: column

    required property string title
    required property string placeholder
    required property var labels

    signal submitted(string typed)
    signal edited(int position, string label)
    signal removed(int position)

    /** Empties the field for a new label. */
    function clear(): void {
        entry.clear();
    }

    spacing: 10
    Layout.fillWidth: true
    Layout.fillHeight: true
    Layout.preferredWidth: 1
    Layout.alignment: Qt.AlignTop

    PVText {
        text: column.title
        size: Fonts.subheadline
        weight: Font.DemiBold
        elide: Text.ElideRight
        Layout.fillWidth: true
    }

    Flickable {
        id: scroll

        contentWidth: width
        contentHeight: rows.height
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.maximumHeight: contentHeight

        ScrollBar.vertical: PVScrollBar {}

        Column {
            id: rows

            width: scroll.width
            spacing: 6

            Repeater {
                model: column.labels
                delegate: ConfigItemRow {
                    id: row

                    required property editedLabel label
                    required property int index

                    width: rows.width
                    value: label.text
                    onEdited: text => column.edited(index, text)
                    onRemoved: column.removed(index)
                    onReached: {
                        const last = row.y + row.height - scroll.height;
                        scroll.contentY = Math.max(last, Math.min(scroll.contentY, row.y));
                    }
                }
            }
        }
    }

    RowLayout {
        spacing: 8

        PVTextField {
            id: entry

            placeholderText: column.placeholder
            Layout.fillWidth: true
            onAccepted: column.submitted(entry.text)
        }
        PVButton {
            text: "+ Ajouter"
            onClicked: column.submitted(entry.text)
        }
    }
    Item {
        Layout.fillHeight: true
    }
}
