#include "model/PersistedData.h"
#include "model/ShowJson.h"
#include "model/ShowLibrary.h"
#include "support/RandomRecords.h"

#include <doctest/doctest.h>

#include <string>
#include <utility>

using namespace tessivo;

TEST_CASE("the record is that of the shows whatever was done to them, and reads back the same") {
    test::RandomRecords random(20010101);
    PersistedData data = random.persistedData();
    ShowLibrary library(data.shows);
    for (int i = 0; i < 300; ++i) {
        CAPTURE(i);
        Show show = random.show();
        const std::size_t position = random.below(data.shows.size() + 1);
        if (position == data.shows.size()) {
            data.shows.push_back(show);
            library.append(std::move(show), {});
        } else if (const Uuid id = data.shows[position].id; random.below(4) == 0) {
            std::erase_if(data.shows, [&](const Show& other) { return other.id == id; });
            library.erase(id, {});
        } else {
            show.id = data.shows.front().id;  // ids may be there more than once
            data.shows[position] = show;
            library.edit(position, {}, [&](Show& edited) { edited = std::move(show); });
        }
        CHECK(library.shows() == data.shows);
        if (random.below(2) == 0) {  // also after several changes
            data.activeSongIndex = random.integer();
            const std::string json = library.record(data.activeShowId, data.activeSongIndex);
            CHECK(json == encodeJson(data));
            const auto back = decodePersistedData(json);
            REQUIRE(back.has_value());
            CHECK(back->shows == data.shows);
            CHECK(back->activeSongIndex == data.activeSongIndex);
        }
    }
}
