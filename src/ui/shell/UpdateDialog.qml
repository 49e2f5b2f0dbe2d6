import Tessivo.Style
import Tessivo.Ui

/** Tells of a newer version. */
PVDialog {
    title: "Mise à jour"
    message: ShellViewModel.updateAvailable ? "La version " + ShellViewModel.latestUpdateVersion + " est disponible. Celle-ci est la " + Qt.application.version + ". Installe-la avant le prochain show, comme tu as installé celle-ci." : ShellViewModel.updateCheckFailed ? "Vérification impossible. Réessaie une fois connecté à Internet." : "Aucune mise à jour disponible."
    action: "OK"
    cancels: false
}
