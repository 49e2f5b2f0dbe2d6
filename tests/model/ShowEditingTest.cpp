#include "model/ShowEditing.h"

#include <doctest/doctest.h>

#include <string>
#include <string_view>

using namespace tessivo;

namespace {

/// A show of songs with one letter each.
Show showOf(std::string_view letters) {
    Show show;
    for (const char letter : letters) {
        show.songs.emplace_back().title = letter;
    }
    return show;
}

std::string lettersOf(const Show& show) {
    std::string letters;
    for (const Song& song : show.songs) {
        letters += song.title;
    }
    return letters;
}

}  // namespace

TEST_CASE("removing a song keeps the cursor on its song, or on a song") {
    struct Row {
        const char* songs;
        std::int64_t cursor;
        std::size_t removed;
        const char* left;
        std::int64_t cursorAfter;
    };
    const Row rows[] = {
        {"ABCDE", 3, 1, "ACDE", 2},  {"ABCDE", 3, 3, "ABCE", 3},   {"ABCDE", 3, 4, "ABCD", 3},
        {"ABCDE", 4, 4, "ABCD", 3},  {"ABCDE", 5, 0, "BCDE", 3},   {"ABCDE", 5, 4, "ABCD", 3},
        {"ABCDE", 42, 2, "ABDE", 3}, {"ABCDE", -1, 0, "BCDE", -1}, {"A", 0, 0, "", 0},
        {"A", 1, 0, "", 0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.cursor);
        CAPTURE(row.removed);
        Show show = showOf(row.songs);
        CHECK(editing::removeSong(show, Uuid(), row.cursor) == row.cursor);
        CHECK(editing::removeSong(show, show.songs[row.removed].id, row.cursor) == row.cursorAfter);
        CHECK(lettersOf(show) == row.left);
    }
}

TEST_CASE("moving songs keeps their order and the cursor on its song") {
    struct Row {
        std::set<std::int64_t> from;
        std::int64_t to;
        std::int64_t cursor;
        const char* after;
        std::int64_t cursorAfter;
    };
    const Row rows[] = {
        {{0}, 2, 0, "BACD", 1},        {{3}, 0, 0, "DABC", 1},    {{1}, 4, 0, "ACDB", 0},
        {{2}, 0, 2, "CABD", 0},        {{0}, 4, 2, "BCDA", 1},    {{0, 2}, 4, 2, "BDAC", 3},
        {{1, 3}, 2, 3, "ABDC", 2},     {{0, 3}, 0, 1, "ADBC", 2}, {{1}, 1, 1, "ABCD", 1},
        {{1}, 2, 1, "ABCD", 1},        {{0}, 4, 4, "BCDA", 4},    {{0}, 4, 9, "BCDA", 9},
        {{3}, 0, -1, "DABC", -1},      {{}, 0, 2, "ABCD", 2},     {{-1, 4}, 0, 2, "ABCD", 2},
        {{-1, 4, 3}, 1, 0, "ADBC", 0}, {{0}, 5, 2, "ABCD", 2},    {{0}, -1, 2, "ABCD", 2},
    };
    for (const Row& row : rows) {
        CAPTURE(row.after);
        CAPTURE(row.to);
        Show show = showOf("ABCD");
        CHECK(editing::moveSongs(show, row.from, row.to, row.cursor) == row.cursorAfter);
        CHECK(lettersOf(show) == row.after);
    }
}

TEST_CASE("a new guest gets the first labels that there are") {
    Show show = showOf("AB");
    show.mics = {"HF 1", "HF 2"};
    show.iems.clear();
    editing::addGuest(show, show.songs[1].id);
    REQUIRE(show.songs[1].guests.size() == 1);
    const Guest& guest = show.songs[1].guests[0];
    CHECK(guest == Guest{guest.id, "", "HF 1", "", std::nullopt});
}
