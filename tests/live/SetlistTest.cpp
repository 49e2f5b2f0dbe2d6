#include "live/Setlist.h"
#include "live/StagePanel.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <string>

using namespace tessivo;

namespace {

std::string numbers(std::span<const Song> songs) {
    std::string text;
    for (const Song& song : songs) {
        text += song.title.substr(song.title.rfind(' '));
    }
    return text;
}

}  // namespace

TEST_CASE("the screens show two past songs, the coming ones and the place in the setlist") {
    struct Row {
        std::size_t count;
        std::int64_t index;
        const char* past;
        const char* next;
        StagePanel panel;
        std::int64_t position;
    };
    using enum StagePanel;
    const Row rows[] = {
        {10, 0, "", " 2 3 4 5", songs, 1},
        {10, 1, " 1", " 3 4 5 6", songs, 2},
        {10, 7, " 6 7", " 9 10", songs, 8},
        {10, 9, " 8 9", "", songs, 10},
        {10, 10, " 9 10", "", finished, 10},
        {10, 11, "", "", finished, 10},
        {10, INT64_MAX, "", "", finished, 10},
        {10, -1, "", " 1 2 3 4", notStarted, 0},
        {10, INT64_MIN, "", " 1 2 3 4", notStarted, 0},
        {1, 0, "", "", songs, 1},
        {0, 0, "", "", emptySetlist, 0},
        {0, -4, "", "", emptySetlist, 0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.count);
        CAPTURE(row.index);
        const Show show = showWithSongs(row.count);
        CHECK(numbers(pastSongs(show, row.index)) == row.past);
        CHECK(numbers(nextSongs(show, row.index, nextSongsOnLiveScreen)) == row.next);
        CHECK(stagePanel(&show, row.index) == row.panel);
        CHECK(shownPosition(show, row.index) == row.position);
    }
    CHECK(stagePanel(nullptr, 0) == waitingForShow);
    CHECK(numbers(nextSongs(showWithSongs(8), 1, nextSongsOnStage)) == " 3 4 5 6 7 8");
}

TEST_CASE("a guest's line leaves out an empty volume and names the nameless") {
    Guest guest{Uuid(), "Chœurs", "HF 2", "Mix 3", "-3"};
    CHECK(guestLine(guest, "(sans nom)") == "Chœurs — HF 2 · Mix 3 · vol -3");
    guest.volume = "";
    CHECK(guestLine(guest, "(sans nom)") == "Chœurs — HF 2 · Mix 3");
    guest = {Uuid(), "", "HF 1", "", std::nullopt};
    CHECK(guestLine(guest, "(sans nom)") == "(sans nom) — HF 1 · ");
    CHECK(guestLine(guest, "—") == "— — HF 1 · ");
}

TEST_CASE("a time in words has its two largest units") {
    const std::pair<double, const char*> rows[] = {{0.9, "0 s"},
                                                   {59.9, "59 s"},
                                                   {61.0, "1 min 1 s"},
                                                   {125.0, "2 min 5 s"},
                                                   {600.0, "10 min"},
                                                   {3605.0, "1 h"},
                                                   {86'400.0 + 7200.0, "1 j 2 h"},
                                                   {1e300, "104166666666 j 16 h"}};
    for (const auto& [seconds, words] : rows) {
        CHECK(timeInWords(seconds) == words);
    }
}
