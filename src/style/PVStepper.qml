import QtQuick
import Tessivo.Style

/** Changes a whole number by 1, with its buttons or the up and down keys, between `from` and `to`.
    A value from elsewhere may lie outside; the next step brings it back. */
Row {
    id: stepper

    required property real value
    property real from: 1
    property real to: 100
    property string label: ""

    /** The operator asks for another value; whoever owns it takes it. */
    signal moved(real value)

    function step(by: int) {
        const next = Math.min(Math.max(value + by, from), to);
        if (next !== value) {
            moved(next);
        }
    }

    spacing: 8
    Keys.onUpPressed: stepper.step(1)
    Keys.onDownPressed: stepper.step(-1)

    Accessible.role: Accessible.SpinBox
    Accessible.name: stepper.label

    PVText {
        text: stepper.label
        size: 13
        anchors.verticalCenter: parent.verticalCenter
        Accessible.ignored: true
    }
    PVButton {
        glyph: Icons.minus
        tip: "Diminuer"
        autoRepeat: true
        enabled: stepper.value > stepper.from
        Accessible.name: stepper.label + " : diminuer"
        onClicked: stepper.step(-1)
    }
    PVButton {
        glyph: Icons.add
        tip: "Augmenter"
        autoRepeat: true
        enabled: stepper.value < stepper.to
        Accessible.name: stepper.label + " : augmenter"
        onClicked: stepper.step(1)
    }
}
