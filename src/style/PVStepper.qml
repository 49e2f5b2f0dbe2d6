import QtQuick
import Tessivo.Style

/** Changes a whole number by 1, with its buttons or the up and down keys, between `from` and `to`.
    A value from elsewhere may lie outside; the next step brings it back. */
Column {
    id: stepper

    /** What the number is, above it. */
    required property string caption
    required property real value
    property real from: 1
    property real to: 100
    property string label: ""
    /** The label that takes most room: the buttons stay where they are while it changes. */
    property string widestLabel: label

    /** The operator asks for another value; whoever owns it takes it. */
    signal moved(real value)

    function step(by: int) {
        const next = Math.min(Math.max(value + by, from), to);
        if (next !== value) {
            moved(next);
        }
    }

    spacing: 6
    Keys.onUpPressed: stepper.step(1)
    Keys.onDownPressed: stepper.step(-1)

    Accessible.role: Accessible.SpinBox
    Accessible.name: stepper.caption

    PVText {
        text: stepper.caption
        size: Fonts.caption
        color: Colors.pvPaperFaint
        Accessible.ignored: true
    }
    Row {
        spacing: 8

        PVText {
            text: stepper.label
            size: 13
            width: Math.max(implicitWidth, widest.implicitWidth)
            anchors.verticalCenter: parent.verticalCenter

            PVText {
                id: widest

                visible: false
                text: stepper.widestLabel
                size: 13
            }
        }
        PVButton {
            glyph: Icons.minus
            tip: "Diminuer"
            autoRepeat: true
            enabled: stepper.value > stepper.from
            Accessible.name: stepper.caption + " : diminuer"
            onClicked: stepper.step(-1)
        }
        PVButton {
            glyph: Icons.add
            tip: "Augmenter"
            autoRepeat: true
            enabled: stepper.value < stepper.to
            Accessible.name: stepper.caption + " : augmenter"
            onClicked: stepper.step(1)
        }
    }
}
