#include "live/RunSheet.h"
#include "live/ShowClock.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

using namespace tessivo;

namespace {

using Lengths = std::vector<std::optional<std::int64_t>>;

Show showOf(const Lengths& lengths) {
    Show show = showWithSongs(lengths.size());
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        show.songs[i].duration = lengths[i];
    }
    return show;
}

}  // namespace

TEST_CASE("the end of the show follows from the lengths to come") {
    constexpr std::optional<std::int64_t> none;
    constexpr double nothing = -1;
    struct Row {
        Lengths lengths;
        std::int64_t index;
        double elapsed;  // of the song under the cursor
        double end;      // in seconds from now
        std::size_t unknown;
    };
    const Row rows[] = {
        {{100, 200, 50}, 0, 0, 350, 0},
        {{100, 200, 50}, 1, 30.5, 219.5, 0},
        {{100, 200, 50}, 1, 500, 50, 0},
        {{100, 200, 50}, 1, -10, 260, 0},  // the clock went back
        {{100, none, 50}, 1, 30, 50, 1},
        {{100, none, none, 50}, 0, 0, 150, 2},
        {{100, 200}, -1, 30, 300, 0},  // before the first song
        {{100, none}, 1, 0, nothing, 0},
        {{100, 200}, 2, 0, nothing, 0},
        {{-100, INT64_MAX, 50}, 0, 0, 50, 2},
        {{secondsPerDay, 1}, 0, 0, nothing, 0},
        {{}, 0, 0, nothing, 0},
    };
    const Instant now{800'000'000};
    for (const Row& row : rows) {
        const auto end = plannedEnd(showOf(row.lengths), row.index, now + -row.elapsed, now);
        CHECK((end ? end->at - now : nothing) == row.end);
        CHECK((end ? end->songsWithoutLength : 0) == row.unknown);
    }
    CHECK(plannedEndText("22:47", 0) == "Fin prévue 22:47");
    CHECK(plannedEndText("22:47", 1) == "Fin prévue 22:47, 1 morceau sans durée");
    CHECK(plannedEndText("22:47", 3) == "Fin prévue 22:47, 3 morceaux sans durée");
}

TEST_CASE("a time of day is read as it is written") {
    const struct {
        const char* typed;
        const char* read;
    } rows[] = {
        {"20:30", "20:30"},
        {" 20h30 ", "20:30"},
        {"20 h 05", "20:05"},
        {"20H", "20:00"},
        {"9", "09:00"},
        {"930", "09:30"},
        {"2030", "20:30"},
        {"00:00", "00:00"},
        {"24:00", ""},
        {"20:60", ""},
        {"20:30:00", ""},
        {"-1:30", ""},
        {"tôt", ""},
        {"", ""},
        {"h", ""},
        {"99999", ""},
    };
    for (const auto& row : rows) {
        CAPTURE(row.typed);
        const auto time = parseTimeOfDay(row.typed);
        CHECK((time ? timeOfDayText(*time) : "") == row.read);
    }
}

TEST_CASE("a run sheet tells the clock as far as it is known") {
    const RunSheet sheet = runSheet(showOf({3600, 240, std::nullopt, 60, -1}), 23 * 3600);
    std::string times;
    for (const RunSheetRow& row : sheet.rows) {
        times += std::to_string(row.number) + " " + sheetTimeText(row.start) + "-" +
                 sheetTimeText(row.end) + ", ";
    }
    CHECK(times == "1 23:00-00:00, 2 00:00-00:04, 3 00:04-, 4 ≥ 00:04-≥ 00:05, 5 ≥ 00:05-, ");
    CHECK(sheet.knownLength == 3900);
    CHECK(sheet.songsWithoutLength == 2);
    CHECK(!runSheet(showOf({60}), std::nullopt).rows[0].end);
}

TEST_CASE("no cell of the file for spreadsheets is a formula") {
    const std::pair<const char*, const char*> rows[] = {
        {"=1+1", "'=1+1"},
        {"@SUM(A1)", "'@SUM(A1)"},
        {"+cmd|' /C calc'!A0", "'+cmd|' /C calc'!A0"},
        {"-2+3", "'-2+3"},
        {"-A1", "'-A1"},
        {"\t=1", "'\t=1"},
        {"-3 dB", "-3 dB"},
        {"-3,5", "-3,5"},
        {"Léa \"L\"; fin", "Léa \"\"L\"\"; fin"},
    };
    for (const auto& [typed, written] : rows) {
        Show show = showOf({65});
        show.songs[0].title = typed;
        CHECK(runSheetCsv(runSheet(show, 72000)) ==
              "\uFEFF\"N°\";\"Titre\";\"Timecode\";\"Début\";\"Durée\";\"Fin\";\"Guest\";\"Micro\";"
              "\"IEM\";\"Volume\"\r\n\"1\";\"" +
                  std::string(written) +
                  "\";\"\";\"20:00\";\"0:01:05\";\"20:01\";\"\";\"\";\"\";\"\"\r\n");
    }
}
