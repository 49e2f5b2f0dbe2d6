#include "model/ShowJson.h"
#include "sync/LiveState.h"

#include <doctest/doctest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;

namespace {

// The stored form, as it must stay: what earlier versions wrote is read, and written the same.
const std::string guestId = "0F8FAD5B-D9CB-469F-A165-70867728950E";
const std::string guestJson =
    R"({"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","name":"Ana","mic":"M1","iem":"Perso",)"
    R"("volume":"-6 dB"})";
const std::string songJson =
    R"({"id":"11111111-2222-4333-8444-555555555555","title":"Été","guests":[)" + guestJson +
    R"(],"ltcTimecode":"01:02:03:04","duration":215})";
const std::string showJson =
    R"({"id":"AAAAAAAA-BBBB-4CCC-8DDD-EEEEEEEEEEEE","name":"Gala","mics":["M1","M2"],)"
    R"("iems":["Perso"],"songs":[)" +
    songJson + "]}";
const std::string dataJson = R"({"shows":[)" + showJson +
                             R"(],"activeShowId":"AAAAAAAA-BBBB-4CCC-8DDD-EEEEEEEEEEEE",)"
                             R"("activeSongIndex":2})";

/// `text` with the only occurrence of `part` replaced.
std::string replaced(std::string text, const std::string& part, const std::string& with) {
    const auto position = text.find(part);
    REQUIRE(position != std::string::npos);
    REQUIRE(text.find(part, position + 1) == std::string::npos);
    return text.replace(position, part.size(), with);
}

/// `text` without the member `member`, given as written, and without the comma that it leaves.
std::string without(const std::string& text, const std::string& member) {
    const bool last = text.find(member + "}") != std::string::npos;
    return last ? replaced(text, "," + member, "") : replaced(text, member + ",", "");
}

/// The guest of the sample with one more member in front, which is ignored.
std::string withExtra(const std::string& member) {
    return replaced(guestJson, R"({"id")", "{" + member + R"(,"id")");
}

using Values = std::vector<std::string>;
const Values notText = {"1", "true", "[]", "{}", R"(["M1"])"};
// What else is no UUID or no integer, the tests of those tell.
const Values notUuid = {"1", "true", "[]", "{}", R"("")", R"("0F8FAD5B")"};
const Values notInteger = {
    R"("215")", "true",  "[]",  "{}", "1.5", "9223372036854775808", "-9223372036854775809",
    "1e19",     "1e400", "1e-1"};
const Values notTexts = {R"("M1")", "1", "{}", "[1]", "[null]", R"([["M1"]])"};
const Values notRecords = {"1", R"("M1")", "{}", "[1]", "[null]", "[{}]", "[[]]"};

}  // namespace

TEST_CASE("each member is required or optional, and of one type") {
    struct Row {
        std::string member;
        bool isOptional;
        const Values& wrongValues;
    };
    const Row rows[] = {
        {R"("id":"0F8FAD5B-D9CB-469F-A165-70867728950E")", false, notUuid},
        {R"("name":"Ana")", false, notText},
        {R"("mic":"M1")", false, notText},
        {R"("iem":"Perso")", false, notText},
        {R"("volume":"-6 dB")", true, notText},
        {R"("id":"11111111-2222-4333-8444-555555555555")", false, notUuid},
        {R"("title":"Été")", false, notText},
        {R"("guests":[)" + guestJson + "]", false, notRecords},
        {R"("ltcTimecode":"01:02:03:04")", true, notText},
        {R"("duration":215)", true, notInteger},
        {R"("id":"AAAAAAAA-BBBB-4CCC-8DDD-EEEEEEEEEEEE")", false, notUuid},
        {R"("name":"Gala")", false, notText},
        {R"("mics":["M1","M2"])", false, notTexts},
        {R"("iems":["Perso"])", false, notTexts},
        {R"("songs":[)" + songJson + "]", false, notRecords},
        {R"("shows":[)" + showJson + "]", false, notRecords},
        {R"("activeShowId":"AAAAAAAA-BBBB-4CCC-8DDD-EEEEEEEEEEEE")", true, notUuid},
        {R"("activeSongIndex":2)", false, notInteger},
    };
    for (const Row& row : rows) {
        CAPTURE(row.member);
        const std::string name = row.member.substr(0, row.member.find(':') + 1);
        const std::string bare = without(dataJson, row.member);
        for (const std::string& json : {bare, replaced(dataJson, row.member, name + "null")}) {
            const auto data = decodePersistedData(json);
            REQUIRE(data.has_value() == row.isOptional);
            CHECK((!data || encodeJson(*data) == bare));
        }
        for (const std::string& wrong : row.wrongValues) {
            CAPTURE(wrong);
            CHECK_FALSE(decodePersistedData(replaced(dataJson, row.member, name + wrong)));
        }
    }
}

TEST_CASE("the sample's values arrive in their fields, and are written the same") {
    const auto data = decodePersistedData(dataJson);
    REQUIRE(data.has_value());
    const Guest guest{*Uuid::fromText(guestId), "Ana", "M1", "Perso", "-6 dB"};
    const Song song{*Uuid::fromText("11111111-2222-4333-8444-555555555555"),
                    "Été",
                    {guest},
                    "01:02:03:04",
                    215};
    const Uuid showId = *Uuid::fromText("AAAAAAAA-BBBB-4CCC-8DDD-EEEEEEEEEEEE");
    CHECK(data->shows == std::vector<Show>{{showId, "Gala", {"M1", "M2"}, {"Perso"}, {song}}});
    CHECK(data->activeShowId == showId);
    CHECK(data->activeSongIndex == 2);
    CHECK(encodeJson(*data) == dataJson);
}

TEST_CASE("what JSON leaves free is read: order, unknown members, space, escapes, UUID case") {
    const Guest guest = *decodeGuest(guestJson);
    const std::string same[] = {
        R"({"volume":"-6 dB","iem":"Perso","mic":"M1","name":"Ana","id":")" + guestId + "\"}",
        withExtra(R"("x":{"id":[1.5,null,{"name":1}]},"y":false)"),
        // Of repeated members the first counts.
        replaced(guestJson, R"("mic")", R"("name":"Bea","name":1,"mic")"),
        "\uFEFF  " + replaced(guestJson, R"(,"mic")", " ,\r\n\t\"mic\" ") + "\n",
        replaced(guestJson, R"("name":"Ana")", R"("na\u006De":"\u0041na")"),
        replaced(guestJson, guestId, "0f8fad5b-d9cb-469f-a165-70867728950e"),
    };
    for (const std::string& json : same) {
        CAPTURE(json);
        CHECK(decodeGuest(json) == guest);
    }
}

TEST_CASE("only what must be escaped is, and every escape is read") {
    const auto named = [](const std::string& name) { return replaced(guestJson, "Ana", name); };
    const auto guest =
        decodeGuest(named(R"(\"\\\/\b\f\n\r\t\u001B\u001f\u007F\u00e9\uD83C\uDFA4)"));
    REQUIRE(guest.has_value());
    CHECK(guest->name == "\"\\/\b\f\n\r\t\x1B\x1F\x7Fé\U0001F3A4");
    CHECK(encodeJson(*guest) == named(R"(\"\\/\b\f\n\r\t\u001B\u001F)"
                                      "\x7Fé\U0001F3A4"));
}

TEST_CASE("an integer is any number whose value is whole and fits 64 bits") {
    const std::pair<const char*, std::int64_t> rows[] = {{"-0.0", 0},
                                                         {"1.25E+2", 125},
                                                         {"-1200e-2", -12},
                                                         {"1e18", 1'000'000'000'000'000'000},
                                                         {"9007199254740993", 9007199254740993},
                                                         {"9223372036854775807", INT64_MAX},
                                                         {"-9223372036854775808", INT64_MIN}};
    for (const auto& row : rows) {
        CAPTURE(row.first);
        const auto song = decodeSong(replaced(songJson, "215", row.first));
        REQUIRE(song.has_value());
        CHECK(song->duration == row.second);
    }
}

TEST_CASE("a live state keeps its instant to the last bit, and is whole or nothing") {
    const std::string start = R"({"show":)" + showJson + R"(,"activeSongIndex":-3)";
    using Limits = std::numeric_limits<double>;
    const std::pair<const char*, double> rows[] = {{"10", 10.0},
                                                   {"-0.3333333333333333", -1.0 / 3.0},
                                                   {"1.7976931348623157e+308", Limits::max()},
                                                   {"5e-324", Limits::denorm_min()}};
    for (const auto& row : rows) {
        const std::string json = start + R"(,"currentSongStartedAt":)" + row.first + "}";
        CAPTURE(json);
        const auto state = decodeLiveState(json);
        REQUIRE(state);
        CHECK(state->currentSongStartedAt == Instant{row.second});
        CHECK(encodeJson(*state) == json);
    }
    for (const char* end :
         {"}", R"(,"currentSongStartedAt":null})", R"(,"currentSongStartedAt":1e400})"}) {
        CHECK_FALSE(decodeLiveState(start + end));
    }
}

TEST_CASE("text that is no JSON document of UTF-8 is refused") {
    const std::string nul(1, '\0');
    Values documents = {"null", "[" + guestJson + "]", replaced(guestJson, R"(dB"})", R"(dB",})")};
    for (std::size_t length = 0; length < guestJson.size(); ++length) {
        documents.push_back(guestJson.substr(0, length));
    }
    for (const std::string& end : {std::string("x"), std::string("}"), nul, guestJson}) {
        documents.push_back(guestJson + end);
    }
    // Escapes of half a surrogate pair among them.
    for (const std::string name : {"\x1F", R"(\x)", R"(\uD83C\u0041)", R"(\uDFA4)", "\xC3"}) {
        documents.push_back(replaced(guestJson, "Ana", name));
    }
    // In what is skipped too.
    for (const char* member :
         {"\"x\":\"\xC3\"", "\"x\":\"\n\"", "\"x\":[", "\"x\":1 2", "x:1", ""}) {
        documents.push_back(withExtra(member));
    }
    for (const std::string& json : documents) {
        CAPTURE(json);
        CHECK_FALSE(decodeGuest(json).has_value());
    }
}

TEST_CASE("nothing in a member that nobody reads refuses a record: no number, no depth") {
    const std::string deep = std::string(1'000'000, '[') + std::string(1'000'000, ']');
    for (const std::string& value : {std::string("[-1e400,1e-400]"), std::string(400, '9'), deep}) {
        CHECK(decodeGuest(withExtra("\"x\":" + value)).has_value());
    }
}
