import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Chooses one of the show's labels. A text that isn't among them is shown all the same, with no
    entry highlighted, until another is chosen. */
PVComboBox {
    id: chooser

    required property string label
    required property var labels
    /** For whom one is chosen. */
    required property string whose

    signal choose(string label)

    function follow(): void {
        currentIndex = Qt.binding(() => labels.indexOf(label));
    }

    Accessible.description: displayText + ", " + whose
    model: labels
    displayText: label
    size: Fonts.caption
    popupWidth: Math.max(width, 180)
    emptyText: "Rien dans l'onglet Micros & IEM."

    // The base gives itself an entry with every new model and every choice.
    onModelChanged: follow()
    Component.onCompleted: follow()
    onActivated: row => {
        choose(textAt(row));
        follow();
    }
}
