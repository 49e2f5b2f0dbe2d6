pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** A song that was just played, on one line: it never pushes the current song out of view. */
Rectangle {
    id: row

    required property songInfo song

    height: line.height + 20
    radius: 8
    color: Colors.pvBlack2

    Row {
        id: line

        x: 20
        y: 10
        width: row.width - 40
        spacing: 12

        PVText {
            id: mark

            text: "✓"
            size: 14
            weight: Font.Bold
            color: Colors.pvPaperFaint
            anchors.verticalCenter: parent.verticalCenter
        }
        PVText {
            id: title

            text: row.song.title
            size: 16
            weight: Font.Medium
            color: Colors.pvPaperFaint
            // A long one leaves room for who was there.
            width: Math.min(implicitWidth, (line.width - x) * (dot.visible ? 0.6 : 1))
            elide: Text.ElideRight
            anchors.verticalCenter: parent.verticalCenter
        }
        PVText {
            id: dot

            visible: row.song.guests.length > 0
            text: "·"
            color: Colors.pvPaperFaint
            anchors.verticalCenter: parent.verticalCenter
        }
        Repeater {
            model: row.song.guests
            delegate: PVText {
                required property guestInfo modelData

                text: modelData.stageLine
                size: 14
                color: Colors.pvPaperFaint
                width: Math.max(0, Math.min(implicitWidth, line.width - x))
                elide: Text.ElideRight
                anchors.verticalCenter: parent?.verticalCenter
            }
        }
    }
}
