#include "live/HandOvers.h"

#include <doctest/doctest.h>

#include <initializer_list>
#include <string>
#include <vector>

using namespace tessivo;

namespace {

struct Use {
    const char* name;
    const char* mic;
    const char* iem = "";
};

Song song(std::initializer_list<Use> uses, std::optional<std::int64_t> length = 60) {
    Song made;
    made.duration = length;
    for (const Use& use : uses) {
        made.guests.push_back({Uuid::random(), use.name, use.mic, use.iem, std::nullopt});
    }
    return made;
}

/// All that a song's equipment goes through, a line each.
std::string story(const HandOvers& all, std::size_t index) {
    std::string text;
    for (const HandOver& one : all.songs[index]) {
        text += (text.empty() ? "" : " | ") + handOverText(all, one);
    }
    return text;
}

}  // namespace

TEST_CASE("equipment is handed from song to song") {
    struct Row {
        std::vector<Song> songs;
        const char* last;  // of the last song
    };
    const Row rows[] = {
        {{song({{"Léa", "HF 2"}})}, "HF 2\u00A0: Léa, premier"},
        {{song({{"Léa", "HF 2"}}), song({{"Karim", "HF 2"}})}, "HF 2\u00A0: Léa → Karim, serré"},
        {{song({{"Léa", "HF 2"}}), song({{" Léa ", "\tHF 2 "}})}, "HF 2\u00A0: Léa, gardé"},
        {{song({{"Léa", "HF 2"}}), song({}), song({{"Léa", "HF 2"}})}, "HF 2\u00A0: Léa, gardé"},
        // The songs between count, and neither of the two that use it.
        {{song({{"Léa", "HF 2"}}, 600), song({}, 200), song({{"Karim", "HF 2"}}, 600)},
         "HF 2\u00A0: Léa → Karim, passage (1 morceau, 3 min)"},
        {{song({{"Léa", "HF 2"}}), song({}, 200), song({}, std::nullopt),
          song({{"Karim", "HF 2"}})},
         "HF 2\u00A0: Léa → Karim, passage (2 morceaux, au moins 3 min)"},
        {{song({{"Léa", "HF 2"}}, std::nullopt), song({}, 150), song({{"Karim", "HF 2"}})},
         "HF 2\u00A0: Léa → Karim, passage (1 morceau, 3 min)"},
        {{song({{"Léa", "HF 2"}}), song({}, -5), song({{"Karim", "HF 2"}})},
         "HF 2\u00A0: Léa → Karim, passage (1 morceau)"},
        {{song({{"Léa", "HF 2"}, {"", "HF 2"}, {"Noé", "HF 2"}})},
         "HF 2\u00A0: Léa, (sans nom) et Noé, collision"},
        {{song({{"Léa", "HF 2"}, {"Noé", "HF 2"}}), song({{"Noé", "HF 2"}})},
         "HF 2\u00A0: Léa et Noé → Noé, serré"},
        // A label is one microphone however it is spaced, and another one as a mix.
        {{song({{"Léa", "HF 1", "HF 2"}, {"Noé", "HF 2", " HF 1"}})},
         "HF 1\u00A0: Léa, premier | HF 2\u00A0: Noé, premier | "
         "IEM HF 1\u00A0: Noé, premier | IEM HF 2 (hors liste)\u00A0: Léa, premier"},
        {{song({{"Léa", "hf 2", " "}})}, "hf 2 (hors liste)\u00A0: Léa, premier"},
        {{song({{"Léa", " ", ""}})}, ""},
    };
    for (const Row& row : rows) {
        Show show;
        show.mics = {"HF 1", " HF 2", "HF 2", ""};
        show.iems = {"HF 1"};
        show.songs = row.songs;
        CHECK(story(handOvers(show), show.songs.size() - 1) == row.last);
    }
}

TEST_CASE("what changes hands is told with the most pressing first, and what is wrong in words") {
    Show show;
    show.mics = {"A", "B", "C", "D"};
    show.iems = {"M"};
    show.songs = {
        song({{"Léa", "A"}, {"Noé", "C"}}), song({{"Léa", "D"}, {"Noé", "B"}}),
        song({{"Ana", "A"}, {"Ben", "B"}, {"Cyd", "C", "M"}, {"Dan", "C", "X"}, {"Léa", "D"}})};
    const HandOvers all = handOvers(show);
    CHECK(handOversText(all, 2) ==
          "C\u00A0: Cyd et Dan, collision   ·   B\u00A0: Noé → Ben, serré   ·   "
          "A\u00A0: Léa → Ana, passage (1 morceau, 1 min)   ·   IEM M\u00A0: Cyd, premier   ·   "
          "IEM X (hors liste)\u00A0: Dan, premier");
    CHECK(handOversText(all, -1).empty());
    CHECK(handOversText(all, 3).empty());
    const EquipmentFaults faults = equipmentFaults(all, 2);
    CHECK(faults.isCollision);
    CHECK(faults.lines ==
          std::vector<std::string>{"C\u00A0: Cyd et Dan, collision", "Hors liste\u00A0: IEM X"});
    CHECK(equipmentFaults(all, 0).lines.empty());
}
