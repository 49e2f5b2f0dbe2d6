import QtQuick
import Tessivo.Display
import Tessivo.Kit
import Tessivo.Style

/** One guest of the current song on a line: the name gives way before the equipment does. */
Rectangle {
    id: guest

    required property guestInfo modelData
    required property FittedLayout plan

    height: plan.guestHeight
    radius: 6
    color: Colors.withOpacity(Colors.pvRed, 0.1)

    PVText {
        x: guest.plan.padding
        width: mic.x - x - guest.plan.gap
        text: guest.modelData.name || "—"
        size: guest.plan.nameSize
        weight: Font.Bold
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
        anchors.baseline: mic.baseline
    }
    PVText {
        id: mic

        x: iem.x - width - guest.plan.gap
        y: (parent.height - height) / 2
        width: guest.plan.micWidth
        text: guest.modelData.mic || "—"
        size: guest.plan.micSize
        weight: Font.Bold
        color: Colors.pvAmber
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
    }
    PVText {
        id: iem

        x: volume.x - width - (guest.plan.volumeWidth > 0 ? guest.plan.gap : 0)
        width: guest.plan.iemWidth
        text: guest.modelData.iem || "—"
        size: guest.plan.nameSize
        weight: Font.Bold
        color: Colors.pvAmber
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
        anchors.baseline: mic.baseline
    }
    PVText {
        id: volume

        x: parent.width - guest.plan.padding - width
        width: guest.plan.volumeWidth
        text: guest.modelData.volume
        size: guest.plan.volumeSize
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
        anchors.baseline: mic.baseline
    }
}
