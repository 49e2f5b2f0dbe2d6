pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** One list of labels: each can be changed or removed, and new ones are added below. */
ColumnLayout {
    id: column

    required property string title
    required property string placeholder
    required property var labels
    /** What is typed for a new label and not yet added, by column. */
    required property var drafts
    property bool takesKeyboard: false

    signal submitted(string typed)
    signal edited(int position, string label)
    signal removed(int position)

    /** Empties the field for a new label, and shows the one that was added. */
    function goOn(): void {
        entry.clear();
        rows.showEnd();
    }

    spacing: 10
    Layout.fillWidth: true
    Layout.fillHeight: true
    Layout.maximumHeight: implicitHeight
    Layout.preferredWidth: 1
    Layout.alignment: Qt.AlignTop

    PVText {
        text: column.title
        size: Fonts.subheadline
        weight: Font.DemiBold
        elide: Text.ElideRight
        Layout.fillWidth: true
    }

    PVListView {
        id: rows

        spacing: 6
        model: column.labels
        implicitHeight: contentHeight
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.maximumHeight: contentHeight

        delegate: ConfigItemRow {
            required property editedLabel label
            required property int index

            width: rows.width - rows.barWidth
            value: label.text
            onEdited: text => column.edited(index, text)
            onRemoved: column.removed(index)
        }
    }

    RowLayout {
        spacing: 8

        PVTextField {
            id: entry

            placeholderText: column.placeholder
            focus: column.takesKeyboard
            Layout.fillWidth: true
            Component.onCompleted: text = column.drafts[column.title] ?? ""
            onTextChanged: column.drafts[column.title] = text
            onAccepted: column.submitted(entry.text)
        }
        PVButton {
            text: "+ Ajouter"
            Accessible.description: column.title
            onClicked: column.submitted(entry.text)
        }
    }
}
