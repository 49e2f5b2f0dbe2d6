import QtQuick
import Tessivo.Style
import Tessivo.Ui

/** Asks when the show is to start, then puts it on paper; says so when that can't be done. */
Item {
    id: dialogs

    property int form: PaperViewModel.Print

    function ask(wanted: int): void {
        form = wanted;
        start.message = start.question;
        start.value = PaperViewModel.plannedStart;
        start.open();
    }

    PVDialog {
        id: start

        property bool asksAgain: false
        readonly property string question: "De quelle heure partent les horaires du conducteur\u00A0? Laisse vide pour n'en donner aucun."

        title: "Début prévu"
        placeholder: "Par exemple 20:30"
        action: dialogs.form === PaperViewModel.Print ? "Imprimer…" : "Exporter…"
        onOpened: asksAgain = false
        onAccepted: {
            if (PaperViewModel.setPlannedStart(value)) {
                PaperViewModel.make(dialogs.form);
            } else {
                message = "« " + value + " » n'est pas une heure. Écris-la comme 20:30, ou laisse vide.";
                asksAgain = true;
            }
        }
        onClosed: {
            if (asksAgain) {
                open();
            }
        }
    }

    PVDialog {
        id: refusal

        title: "Papier"
        action: "OK"
        cancels: false
    }

    Connections {
        target: PaperViewModel

        function onRefused(reason: string): void {
            refusal.message = reason;
            refusal.open();
        }
    }
}
