// In Qt 6.4 a bound component can't be loaded by a Loader, so ids are reached unbound.
// qmllint disable unqualified
import QtQuick
import Tessivo.Style

/** The tool tip of the item that it stands in, made only when it is wanted: a list has hundreds of
    controls, and making a popup for each takes longer than making the controls. */
Loader {
    id: maker

    required property bool wanted
    required property string text
    /** Over the item, where what stands below it is being read. */
    property bool above: false

    anchors.fill: parent
    active: wanted
    sourceComponent: Timer {
        readonly property PVToolTip tip: PVToolTip {
            parent: maker
            text: maker.text
            above: maker.above
            delay: 0
        }

        interval: 600
        running: true
        onTriggered: {
            // A row that has left its list stands in no window, and yet may live for a moment.
            if (maker.Window.window) {
                tip.open();
            }
        }
    }
}
