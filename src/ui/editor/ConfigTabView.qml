import QtQuick
import QtQuick.Layouts
import Tessivo.Ui

/** The microphones and the in-ear mixes that the show has to give. */
FocusScope {
    id: tab

    required property ShowEditorViewModel editor
    required property var drafts

    RowLayout {
        anchors.fill: parent
        anchors.margins: 16
        spacing: 24

        ConfigColumn {
            title: "🎤 Micros disponibles"
            placeholder: "Ex: HF 5, Guest 5…"
            labels: tab.editor.mics
            drafts: tab.drafts
            takesKeyboard: true
            onSubmitted: typed => {
                if (tab.editor.addMic(typed)) {
                    goOn();
                }
            }
            onEdited: (position, label) => tab.editor.updateMic(position, label)
            onRemoved: position => tab.editor.removeMic(position)
        }
        ConfigColumn {
            title: "🎧 IEM disponibles"
            placeholder: "Ex: Mix perso 2…"
            labels: tab.editor.iems
            drafts: tab.drafts
            onSubmitted: typed => {
                if (tab.editor.addIem(typed)) {
                    goOn();
                }
            }
            onEdited: (position, label) => tab.editor.updateIem(position, label)
            onRemoved: position => tab.editor.removeIem(position)
        }
    }
}
