#include "ltc/LtcEncoder.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "state/EveningJournal.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

using namespace tessivo;

TEST_CASE("the journal tells what happened in the evening and by what") {
    SimulatedPlatform computer;
    const Platform platform = computer;
    {
        AppState state(platform);
        const EveningJournal journal(state, computer.time, computer.journal);
        Show show = showWithSongs(3);
        show.name = "Été";
        show.songs[2].ltcTimecode = "00:00:10:00";
        state.importShow(show);
        state.goNext();
        state.updateSongTitle(show.songs[1].id, "\tCarrousel");  // no event of the evening
        state.goPrev();
        state.checkLtcAutoAdvance(250, 25);  // held off after going back
        state.jumpTo(1);
        computer.time.advance(20.0);
        state.checkLtcAutoAdvance(250, 25);
        state.goNext();
        state.setLocked(true);
        computer.preferences.isFull = true;
        state.goPrev();
        computer.preferences.isFull = false;
        computer.time.advance(2.0);
        LtcManager& timecode = state.ltcManager();
        timecode.startCapturing();
        computer.audio.setDevices({{1, "Interface", {48'000.0, 1}}});
        timecode.setSelectedDeviceId(1);
        timecode.startCapturing();
        computer.time.drain();
        std::vector<float> frame;
        ltc::LtcEncoder(ltc::parseFrameRate("25").value(), 48'000)
            .appendFrame({10, 0, 0, 0}, frame);
        for (const std::vector<float>& sound : {frame, frame, {}, {}, {}}) {
            computer.audio.deliver({sound.empty() ? std::vector<float>(480) : sound});
            computer.time.advance(1.0);
        }
        timecode.stopCapturing();
        state.resume(show.id, computer.time.now());
    }
    {
        AppState state(platform);
        const EveningJournal journal(state, computer.time, computer.journal);
    }
    const std::vector<std::string> expected = {
        "Tessivo démarre",
        "Show ouvert\u00A0: «\u00A0Été\u00A0»",
        "Morceau 2/3 «\u00A0Morceau 2\u00A0», par touche",
        "Morceau 1/3 «\u00A0Morceau 1\u00A0», par touche",
        "Morceau 2/3 «\u00A0Carrousel\u00A0», par clic",
        "Morceau 3/3 «\u00A0Morceau 3\u00A0», par timecode",
        "Hors de la setlist, par touche",
        "Vue live verrouillée",
        "Morceau 3/3 «\u00A0Morceau 3\u00A0», par touche",
        "Les modifications ne sont plus conservées",
        "Les modifications sont de nouveau conservées",
        "Entrée audio\u00A0: Choisis d'abord un périphérique d'entrée.",
        "Capture démarrée",
        "Signal LTC trouvé à 10:00:00:00",
        "Signal LTC perdu",
        "Capture arrêtée",
        "Morceau 3/3 «\u00A0Morceau 3\u00A0», par reprise",
        "Tessivo se termine",
        "Tessivo démarre",
        "Vue live verrouillée",
        "Tessivo se termine",
    };
    CHECK(computer.journal.lines == expected);
}
