pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** A song still to come; the first one is larger, and stronger when it is about to start. */
Rectangle {
    id: row

    required property songInfo song
    required property bool first
    property bool urgent: false

    readonly property int horizontalPadding: first ? 18 : 12
    readonly property int verticalPadding: first ? 14 : 7

    height: content.height + 2 * verticalPadding
    radius: 8
    color: first ? "transparent" : Colors.pvBlack2
    border.width: first ? 2 : 1
    border.color: first ? Colors.pvAmber : Colors.withOpacity(Colors.pvLine, 0.4)

    // Of its own, so that nothing but a change of urgency is animated.
    Rectangle {
        visible: row.first
        anchors.fill: parent
        radius: row.radius
        color: Colors.pvAmber
        opacity: row.urgent ? 0.12 : 0.06

        Behavior on opacity {
            NumberAnimation {
                duration: 300
                easing.type: Easing.InOutQuad
            }
        }
    }

    Column {
        id: content

        x: row.horizontalPadding
        y: row.verticalPadding
        width: row.width - 2 * row.horizontalPadding
        spacing: 6

        PVText {
            visible: row.first
            text: "À SUIVRE"
            size: 11
            weight: Font.Bold
            color: Colors.pvAmber
            font.letterSpacing: 2
        }

        RowLayout {
            width: parent.width
            spacing: 14

            PVText {
                text: row.song.position
                size: row.first ? 18 : 14
                weight: Font.DemiBold
                color: row.first ? Colors.pvAmber : Colors.pvPaperFaint
                Layout.preferredWidth: 28
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: row.first ? 5 : 1
            }
            PVText {
                text: row.song.title
                size: row.first ? 24 : 16
                weight: row.first ? Font.Bold : Font.Medium
                color: row.first ? Colors.pvPaper : Colors.pvPaperDim
                wrapMode: Text.Wrap
                Layout.preferredWidth: Math.max(140, Math.min(implicitWidth, Math.max(content.width * guests.titleShare, parent.width - x - parent.spacing - guests.onOneLine)))
                Layout.alignment: Qt.AlignTop
            }
            PVText {
                visible: row.song.guests.length === 0
                text: "Pas de guest"
                size: row.first ? 15 : 13
                font.italic: true
                color: Colors.pvPaperFaint
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: row.first ? 7 : 2
                Layout.fillWidth: true
            }
            Flow {
                id: guests

                visible: row.song.guests.length > 0
                spacing: 4  // between the lines: nobody scrolls a screen above a stage
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: row.first ? 6 : 2

                /** Between two guests of a line. */
                readonly property int gap: 14
                /** What a long title has at least; many guests need the width more. */
                readonly property real titleShare: onOneLine > 2 * content.width ? 0.25 : 0.4
                /** The title may have what the guests leave free. */
                readonly property real onOneLine: {
                    let total = row.first ? 100 : 80;  // "Pas de guest"
                    for (let i = 0; i < repeater.count; ++i) {
                        total += (i > 0 ? gap : -total) + (repeater.itemAt(i)?.fullWidth ?? 0);
                    }
                    return total;
                }

                Repeater {
                    id: repeater

                    model: row.song.guests
                    delegate: Row {
                        id: guest

                        required property guestInfo modelData
                        readonly property real fullWidth: name.implicitWidth + spacing + equipment.implicitWidth

                        spacing: 5
                        rightPadding: guests.gap - guests.spacing

                        PVText {
                            id: name

                            text: guest.modelData.name || "—"
                            size: row.first ? 16 : 13
                            weight: Font.DemiBold
                            width: Math.min(implicitWidth, Math.max(80, guests.width - guest.rightPadding - equipment.implicitWidth - guest.spacing))
                            elide: Text.ElideRight
                        }
                        PVText {
                            id: equipment

                            text: guest.modelData.equipmentLine
                            size: row.first ? 14 : 12
                            color: Colors.pvAmber
                            width: Math.max(0, Math.min(implicitWidth, guests.width - guest.rightPadding - name.width - guest.spacing))
                            elide: Text.ElideRight
                            anchors.baseline: name.baseline
                        }
                    }
                }
            }
        }
    }
}
