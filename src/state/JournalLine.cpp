#include "state/JournalLine.h"

#include "state/EditNames.h"

namespace tessivo::journal {
namespace {

std::string_view causeText(AppState::MovedBy by) {
    switch (by) {
        case AppState::MovedBy::key:
            return "touche";
        case AppState::MovedBy::click:
            return "clic";
        case AppState::MovedBy::timecode:
            return "timecode";
        case AppState::MovedBy::resumption:
            return "reprise";
    }
    return "";
}

/// A sentence for each kind of event.
struct Teller {
    std::string operator()(const ProgramBegins&) const { return "Tessivo démarre"; }
    std::string operator()(const ProgramEnds&) const { return "Tessivo se termine"; }
    std::string operator()(const ShowOpened& show) const {
        return withName("Show ouvert\u00A0:", show.name, "Show ouvert");
    }
    std::string operator()(const CursorMoved& move) const {
        const bool isOnSong =
            move.index >= 0 && static_cast<std::size_t>(move.index) < move.songCount;
        const std::string place =
            "Morceau " + std::to_string(move.index + 1) + "/" + std::to_string(move.songCount);
        return (isOnSong ? withName(place, move.title, place) : std::string("Hors de la setlist"))
            .append(", par ")
            .append(causeText(move.by));
    }
    std::string operator()(const Capture& capture) const {
        return capture.runs ? "Capture démarrée" : "Capture arrêtée";
    }
    std::string operator()(const InputFailed& failure) const {
        return "Entrée audio\u00A0: " + failure.reason;
    }
    std::string operator()(const Signal& signal) const {
        return signal.isThere ? "Signal LTC trouvé à " + signal.timecode : "Signal LTC perdu";
    }
    std::string operator()(const Stations& stations) const {
        return std::string(stations.now > stations.before ? "Station arrivée" : "Station partie") +
               ", " + std::to_string(stations.now) +
               (stations.now > 1 ? " connectées" : " connectée");
    }
    std::string operator()(const Lock& lock) const {
        return lock.isLocked ? "Vue live verrouillée" : "Vue live déverrouillée";
    }
    std::string operator()(const Keeping& keeping) const {
        return keeping.keeps ? "Les modifications sont de nouveau conservées"
                             : "Les modifications ne sont plus conservées";
    }
    std::string operator()(const FileRefused& file) const {
        return "Fichier de show\u00A0: " + file.reason;
    }
};

}  // namespace

std::string lineFor(const Event& event) {
    return std::visit(Teller(), event);
}

}  // namespace tessivo::journal
