import QtQuick
import QtQuick.Layouts
import Tessivo.Style
import Tessivo.Ui

/** Monitors the timecode input and controls its capture. */
Rectangle {
    id: panel

    required property int songsWithTimecode

    implicitHeight: rows.implicitHeight + 24
    radius: 10
    color: Colors.pvBlack2
    border.width: 1
    border.color: Colors.pvLine

    ColumnLayout {
        id: rows

        anchors.fill: parent
        anchors.margins: 12
        spacing: 10

        RowLayout {
            spacing: 10

            Rectangle {
                implicitWidth: 8
                implicitHeight: 8
                radius: 4
                color: TimecodeViewModel.signalDetected ? Colors.pvGreen : Colors.pvPaperFaint

                Accessible.role: Accessible.Indicator
                Accessible.name: TimecodeViewModel.signalDetected ? "Signal LTC présent" : "Pas de signal LTC"
            }
            PVText {
                text: "LTC"
                size: 11
                weight: Font.Bold
                color: Colors.pvPaperFaint
            }
            PVReadout {
                what: "Timecode"
                text: TimecodeViewModel.currentTimecodeDisplay
                size: 20
                weight: Font.Bold
                color: Colors.pvAmber
            }
            PVText {
                text: TimecodeViewModel.detectedFps + " fps"
                size: Fonts.caption
                color: Colors.pvPaperDim
            }
            Item {
                Layout.fillWidth: true
            }
            PVSwitch {
                text: "Follow LTC"
                checked: ShellViewModel.autoAdvanceEnabled
                onToggled: ShellViewModel.autoAdvanceEnabled = checked
            }
            PVButton {
                glyph: Icons.chevronDown
                look: PVButton.Plain
                foreground: Colors.pvPaperFaint
                tip: "Comment suivre le timecode"
                onClicked: followMenu.popup(this, 0, height)

                FollowMenu {
                    id: followMenu
                }
            }
            PVSwitch {
                text: "Suivi prudent"
                checked: TimecodeViewModel.isCareful
                onToggled: TimecodeViewModel.isCareful = checked
            }
            PVButton {
                text: TimecodeViewModel.isCapturing ? "Arrêter la capture" : "Démarrer la capture"
                // As wide as the longer of both, so that nothing moves under the pointer.
                Layout.minimumWidth: Math.ceil(longest.advanceWidth) + leftPadding + rightPadding
                onClicked: TimecodeViewModel.toggleCapture()

                TextMetrics {
                    id: longest

                    text: "Démarrer la capture"
                    font.family: Fonts.text
                    font.pixelSize: Fonts.caption
                    font.weight: Font.DemiBold
                }

                AimGuard {
                    aim: TimecodeViewModel.isCapturing
                }
            }
        }

        RowLayout {
            spacing: 10

            DeviceChooser {
                Layout.preferredWidth: 260
                Layout.minimumWidth: 120
                Layout.fillWidth: true
                Layout.maximumWidth: 260
            }
            LevelMeter {
                fill: TimecodeViewModel.meterFill
                lively: TimecodeViewModel.hasLevel
            }
            PVButton {
                glyph: Icons.refresh
                foreground: Colors.pvPaperFaint
                tip: enabled ? "Actualiser la liste des entrées audio" : "Recherche des entrées audio…"
                enabled: !TimecodeViewModel.isFetchingDevices
                onClicked: TimecodeViewModel.refreshDevices()
            }
            Item {
                Layout.fillWidth: true
            }
            PVText {
                size: Fonts.caption
                color: Colors.pvPaperFaint
                text: {
                    const count = panel.songsWithTimecode;
                    if (count < 1) {
                        return "Aucun morceau programmé";
                    }
                    return count === 1 ? "1 morceau programmé" : count + " morceaux programmés";
                }
            }
        }

        ChannelRow {
            Layout.fillWidth: true
        }
        LineHealth {
            Layout.fillWidth: true
        }
        PVText {
            visible: TimecodeViewModel.hasLostAudio
            text: "Son perdu : l'ordinateur n'a pas suivi"
            size: Fonts.caption
            color: Colors.pvAmber
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        PVText {
            visible: TimecodeViewModel.lastError !== ""
            text: TimecodeViewModel.lastError
            size: Fonts.caption
            weight: Font.DemiBold  // red is darker than other texts
            color: Colors.pvRed
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
