pragma ComponentBehavior: Bound

import QtQuick
import Tessivo.Display
import Tessivo.Style

/**
 * The current song as large as it can be: title, time left, every guest with the equipment, and who
 * comes next. Widths and heights are added up at one size, for each way to break the title and the
 * guests into lines; the way that can be drawn largest wins. So a song is laid out once, and long
 * names give way before equipment does.
 */
Item {
    id: stage

    required property StageContent content

    readonly property songInfo song: content.current
    readonly property songInfo following: content.following
    readonly property bool hasFollowing: following.position > 0

    readonly property int margin: 14
    readonly property int gap: 14
    readonly property int padding: 12
    readonly property int rowHeight: 46
    readonly property int rowGap: 6
    readonly property int titleLine: 46
    readonly property int longestName: 230
    readonly property int longestLabel: 400

    component Measure: FontMetrics {
        required property int size
        property int weight: Font.Bold

        font.family: Fonts.text
        font.pixelSize: size
        font.weight: weight
    }

    Measure {
        id: titleFont
        size: 38
    }
    Measure {
        id: nameFont
        size: 25
    }
    Measure {
        id: micFont
        size: 34
    }
    Measure {
        id: iemFont
        size: 25
    }
    Measure {
        id: volumeFont
        size: 18
        weight: Font.Normal
    }
    Measure {
        id: nextFont
        size: 19
        weight: Font.DemiBold
    }

    function widthOf(font: FontMetrics, text: string, limit: real): real {
        return Math.min(Math.ceil(font.advanceWidth(text || "—")) + 1, limit);
    }

    // Those of the widest.
    property real nameWidth
    property real micWidth
    property real iemWidth
    property real volumeWidth  // 0 without any

    function measure(): void {
        let [name, mic, iem, volume] = [0, 0, 0, 0];
        for (let i = 0; i < song.guests.length; ++i) {
            const guest = song.guests[i];
            name = Math.max(name, widthOf(nameFont, guest.name, longestName));
            mic = Math.max(mic, widthOf(micFont, guest.mic, longestLabel));
            iem = Math.max(iem, widthOf(iemFont, guest.iem, longestLabel));
            volume = Math.max(volume, guest.volume === "" ? 0 : widthOf(volumeFont, guest.volume, longestLabel));
        }
        [nameWidth, micWidth, iemWidth, volumeWidth] = [name, mic, iem, volume];
    }

    onSongChanged: measure()
    Component.onCompleted: measure()

    readonly property real guestWidth: nameWidth + micWidth + iemWidth + (volumeWidth > 0 ? volumeWidth + gap : 0) + 2 * gap + 2 * padding
    readonly property real timeWidth: 150
    readonly property int nextGuestLines: following.guests.length === 0 ? 0 : following.guests.length > 4 ? 2 : 1
    readonly property real nextHeight: hasFollowing ? 2 * padding + 18 + 36 + 26 * nextGuestLines + gap : 0

    /** How large everything can be with this many columns of guests and lines of the title. */
    function sizeWith(columns: int, lines: int): real {
        const rows = Math.ceil(song.guests.length / columns);
        // Rather three lines than a cut; what is longer still is drawn smaller, then cut.
        const wholeTitle = titleFont.advanceWidth(song.title) / lines * 1.1;
        const titleWidth = lines < 3 ? wholeTitle : Math.min(wholeTitle, 520);
        const needed = Math.max(columns * guestWidth + (columns - 1) * gap, titleWidth + gap + timeWidth, 420);
        const guestsHeight = song.guests.length === 0 ? 30 : rows * (rowHeight + rowGap) - rowGap;
        const height = 20 + Math.max(lines * titleLine, 58) + gap + guestsHeight + 2 * padding;
        return Math.min(stage.width / (needed + 2 * padding + 2 * margin), stage.height / (margin + height + Math.max(nextHeight, gap)));
    }
    readonly property var plan: {
        let best = {
            size: 0,
            columns: 1,
            lines: 1
        };
        for (let columns = 1; columns <= Math.max(1, song.guests.length); ++columns) {
            for (let lines = 1; lines <= 3; ++lines) {
                const size = sizeWith(columns, lines);
                if (size > best.size) {
                    best = {
                        size: size,
                        columns: columns,
                        lines: lines
                    };
                }
            }
        }
        return best;
    }

    Item {
        id: sheet

        width: stage.width / stage.plan.size
        height: stage.height / stage.plan.size
        scale: stage.plan.size
        transformOrigin: Item.TopLeft

        Rectangle {
            id: card

            x: stage.margin
            y: stage.margin
            width: parent.width - 2 * stage.margin
            height: parent.height - y - (stage.nextHeight > 0 ? stage.nextHeight : stage.gap)
            radius: 10
            color: Colors.withOpacity(Colors.pvRed, 0.06)
            border.width: 2.5
            border.color: Colors.pvRed

            Row {
                id: marker

                x: stage.padding
                y: stage.padding
                spacing: 7

                Rectangle {
                    width: 9
                    height: 9
                    radius: 4.5
                    color: Colors.pvRed
                    anchors.verticalCenter: parent.verticalCenter
                }
                PVText {
                    text: "EN COURS"
                    size: 13
                    weight: Font.Bold
                    color: Colors.pvRed
                    font.letterSpacing: 2
                }
            }
            PVText {
                id: title

                x: stage.padding
                y: stage.padding + 20
                width: time.x - x - stage.gap
                height: Math.max(stage.plan.lines * stage.titleLine, 58)
                text: stage.song.title
                size: titleFont.size
                weight: Font.Bold
                wrapMode: Text.Wrap
                maximumLineCount: stage.plan.lines
                elide: Text.ElideRight
                fontSizeMode: Text.Fit
                minimumPixelSize: 24
                verticalAlignment: Text.AlignVCenter
                Accessible.role: Accessible.Heading
            }
            Rectangle {
                id: time

                x: card.width - stage.padding - width
                y: stage.padding
                width: stage.content.countdown ? Math.max(stage.timeWidth, countdown.implicitWidth + 16) : 0
                height: 72
                radius: 8
                color: "transparent"
                // Red alone is grey to some eyes.
                border.width: stage.content.urgent ? 3 : 0
                border.color: Colors.pvRed

                PVText {
                    id: countdown

                    anchors.centerIn: parent
                    text: stage.content.countdown
                    size: 52
                    weight: Font.Bold
                    digits: true
                    color: stage.content.urgent ? Colors.pvRed : Colors.pvPaper
                }
            }

            PVText {
                visible: stage.song.guests.length === 0
                anchors.horizontalCenter: parent.horizontalCenter
                y: title.y + title.height + stage.gap
                text: "Pas de guest sur ce morceau"
                size: 20
                font.italic: true
                color: Colors.pvPaperDim
            }
            Grid {
                id: guests

                x: stage.padding
                y: title.y + title.height + stage.gap + Math.max(0, (card.height - title.y - title.height - stage.gap - stage.padding - height) / 2)
                width: card.width - 2 * stage.padding
                columns: stage.plan.columns
                columnSpacing: stage.gap
                rowSpacing: stage.rowGap

                Repeater {
                    model: stage.song.guests
                    delegate: Rectangle {
                        id: guest

                        required property guestInfo modelData

                        width: (guests.width - (stage.plan.columns - 1) * stage.gap) / stage.plan.columns
                        height: stage.rowHeight
                        radius: 6
                        color: Colors.withOpacity(Colors.pvRed, 0.1)

                        PVText {
                            x: stage.padding
                            width: mic.x - x - stage.gap
                            text: guest.modelData.name || "—"
                            size: nameFont.size
                            weight: Font.Bold
                            elide: Text.ElideRight
                            horizontalAlignment: Text.AlignLeft
                            anchors.baseline: mic.baseline
                        }
                        PVText {
                            id: mic

                            x: iem.x - width - stage.gap
                            y: (parent.height - height) / 2
                            width: stage.micWidth
                            text: guest.modelData.mic || "—"
                            size: micFont.size
                            weight: Font.Bold
                            color: Colors.pvAmber
                            elide: Text.ElideRight
                            horizontalAlignment: Text.AlignLeft
                        }
                        PVText {
                            id: iem

                            x: volume.x - width - (stage.volumeWidth > 0 ? stage.gap : 0)
                            width: stage.iemWidth
                            text: guest.modelData.iem || "—"
                            size: iemFont.size
                            weight: Font.Bold
                            color: Colors.pvAmber
                            elide: Text.ElideRight
                            horizontalAlignment: Text.AlignLeft
                            anchors.baseline: mic.baseline
                        }
                        PVText {
                            id: volume

                            x: parent.width - stage.padding - width
                            width: stage.volumeWidth
                            text: guest.modelData.volume
                            size: volumeFont.size
                            elide: Text.ElideRight
                            horizontalAlignment: Text.AlignLeft
                            anchors.baseline: mic.baseline
                        }
                    }
                }
            }
        }

        Rectangle {
            visible: stage.hasFollowing
            x: stage.margin
            y: card.y + card.height + stage.gap
            width: card.width
            height: parent.height - y
            radius: 8
            color: Colors.withOpacity(Colors.pvAmber, stage.content.urgent ? 0.12 : 0.06)
            border.width: 2
            border.color: Colors.pvAmber

            Column {
                x: stage.padding
                y: stage.padding
                width: parent.width - 2 * stage.padding

                PVText {
                    height: 18
                    text: "À SUIVRE"
                    size: 12
                    weight: Font.Bold
                    color: Colors.pvAmber
                    font.letterSpacing: 2
                }
                PVText {
                    width: parent.width
                    height: 36
                    text: stage.following.position + "  " + stage.following.title
                    size: 26
                    weight: Font.Bold
                    elide: Text.ElideRight
                    verticalAlignment: Text.AlignVCenter
                    horizontalAlignment: Text.AlignLeft
                }
                Flow {
                    id: nextGuests

                    width: parent.width

                    readonly property int shown: stage.countThatFits(width)

                    Repeater {
                        model: stage.following.guests
                        delegate: Row {
                            id: nextGuest

                            required property guestInfo modelData
                            required property int index

                            visible: index < nextGuests.shown
                            height: 26  // whatever the script
                            spacing: 6
                            rightPadding: 16

                            PVText {
                                text: nextGuest.modelData.name || "—"
                                size: nextFont.size
                                weight: Font.DemiBold
                                width: Math.min(implicitWidth, stage.longestName)
                                elide: Text.ElideRight
                            }
                            PVText {
                                text: nextGuest.modelData.mic || "—"
                                size: nextFont.size
                                weight: Font.DemiBold
                                color: Colors.pvAmber
                                width: Math.min(implicitWidth, stage.longestLabel)
                                elide: Text.ElideRight
                            }
                        }
                    }
                    PVText {
                        visible: nextGuests.shown < stage.following.guests.length
                        text: "+" + (stage.following.guests.length - nextGuests.shown)
                        size: nextFont.size
                        weight: Font.DemiBold
                        color: Colors.pvPaperDim
                    }
                }
            }
        }
    }

    /** How many guests of the next song, each with the microphone, the lines for them hold. */
    function countThatFits(room: real): int {
        const guests = following.guests;
        let lines = 1;
        let line = 0;
        for (let i = 0; i < guests.length; ++i) {
            const guest = guests[i];
            const width = widthOf(nextFont, guest.name, longestName) + 6 + widthOf(nextFont, guest.mic, longestLabel) + 16;
            // The last line keeps room for how many more there are.
            const limit = lines === nextGuestLines && i < guests.length - 1 ? room - 60 : room;
            if (line > 0 && line + width > limit) {
                if (++lines > nextGuestLines) {
                    return i;
                }
                line = 0;
            }
            line += width;
        }
        return guests.length;
    }
}
