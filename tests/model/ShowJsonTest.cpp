#include "model/ShowJson.h"
#include "support/RandomRecords.h"

#include <doctest/doctest.h>

#include <string>

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

template <typename Record>
std::optional<Record> decoded(std::string_view json) {
    if constexpr (std::is_same_v<Record, Guest>) {
        return decodeGuest(json);
    } else if constexpr (std::is_same_v<Record, Song>) {
        return decodeSong(json);
    } else if constexpr (std::is_same_v<Record, Show>) {
        return decodeShow(json);
    } else {
        return decodePersistedData(json);
    }
}

enum class Need { Required, Optional };

/// One member of a record: how it stands in the sample and what else it must refuse.
struct MemberRule {
    std::string json;
    std::string valueJson;
    Need need;
    std::vector<std::string> wrongValues;
};

const std::vector<std::string> notText = {"1", "true", "[]", "{}", R"(["M1"])"};
// What else is no UUID or no integer, the tests of those tell.
const std::vector<std::string> notUuid = {"1", "true", "[]", "{}", R"("")", R"("0F8FAD5B")"};
const std::vector<std::string> notInteger = {
    R"("215")", "true", "[]", "{}", "1.5", "9223372036854775808", "-9223372036854775809",
    "1e19",     "1e-1"};
const std::vector<std::string> notTexts = {R"("M1")", "1", "{}", "[1]", "[null]", R"([["M1"]])"};
const std::vector<std::string> notRecords = {"1", R"("M1")", "{}", "[1]", "[null]", "[{}]", "[[]]"};

template <typename Record>
void checkMembers(const std::string& sample, const std::vector<MemberRule>& rules) {
    const auto whole = decoded<Record>(sample);
    REQUIRE(whole.has_value());
    CHECK(encodeJson(*whole) == sample);
    for (const MemberRule& rule : rules) {
        CAPTURE(rule.json);
        const auto withValue = [&](const std::string& value) {
            const std::string name = rule.json.substr(0, rule.json.size() - rule.valueJson.size());
            return decoded<Record>(replaced(sample, rule.json, name + value));
        };
        const std::string bare = without(sample, rule.json);
        if (rule.need == Need::Optional) {
            REQUIRE(decoded<Record>(bare).has_value());
            CHECK(encodeJson(*decoded<Record>(bare)) == bare);
            REQUIRE(withValue("null").has_value());
            CHECK(encodeJson(*withValue("null")) == bare);
        } else {
            CHECK_FALSE(decoded<Record>(bare).has_value());
            CHECK_FALSE(withValue("null").has_value());
        }
        for (const std::string& wrong : rule.wrongValues) {
            CAPTURE(wrong);
            CHECK_FALSE(withValue(wrong).has_value());
        }
    }
}

MemberRule rule(const std::string& name, const std::string& value, Need need,
                const std::vector<std::string>& wrongValues) {
    return {"\"" + name + "\":" + value, value, need, wrongValues};
}

}  // namespace

TEST_CASE("each member is required or optional, and of one type") {
    using enum Need;
    checkMembers<Guest>(guestJson, {rule("id", "\"" + guestId + "\"", Required, notUuid),
                                    rule("name", R"("Ana")", Required, notText),
                                    rule("mic", R"("M1")", Required, notText),
                                    rule("iem", R"("Perso")", Required, notText),
                                    rule("volume", R"("-6 dB")", Optional, notText)});
    checkMembers<Song>(songJson,
                       {rule("id", R"("11111111-2222-4333-8444-555555555555")", Required, notUuid),
                        rule("title", R"("Été")", Required, notText),
                        rule("guests", "[" + guestJson + "]", Required, notRecords),
                        rule("ltcTimecode", R"("01:02:03:04")", Optional, notText),
                        rule("duration", "215", Optional, notInteger)});
    checkMembers<Show>(showJson,
                       {rule("id", R"("AAAAAAAA-BBBB-4CCC-8DDD-EEEEEEEEEEEE")", Required, notUuid),
                        rule("name", R"("Gala")", Required, notText),
                        rule("mics", R"(["M1","M2"])", Required, notTexts),
                        rule("iems", R"(["Perso"])", Required, notTexts),
                        rule("songs", "[" + songJson + "]", Required, notRecords)});
    checkMembers<PersistedData>(
        dataJson,
        {rule("shows", "[" + showJson + "]", Required, notRecords),
         rule("activeShowId", R"("AAAAAAAA-BBBB-4CCC-8DDD-EEEEEEEEEEEE")", Optional, notUuid),
         rule("activeSongIndex", "2", Required, notInteger)});
}

TEST_CASE("the sample's values arrive in their fields") {
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
}

TEST_CASE("what JSON leaves free is read: order, unknown members, space, escapes, UUID case") {
    const Guest guest = *decodeGuest(guestJson);
    const std::string same[] = {
        R"({"volume":"-6 dB","iem":"Perso","mic":"M1","name":"Ana","id":")" + guestId + "\"}",
        replaced(guestJson, R"({"id")", R"({"x":{"id":[1.5,null,{"name":1}]},"y":false,"id")"),
        replaced(guestJson, R"(,"mic")", " ,\r\n\t\"mic\" "),
        "  " + guestJson + "\n",
        replaced(guestJson, "Ana", R"(\u0041na)"),
        replaced(guestJson, guestId, "0f8fad5b-d9cb-469f-a165-70867728950e"),
    };
    for (const std::string& json : same) {
        CAPTURE(json);
        REQUIRE(decodeGuest(json).has_value());
        CHECK(*decodeGuest(json) == guest);
    }
}

TEST_CASE("an integer is any number whose value is whole and fits 64 bits") {
    struct Row {
        const char* json;
        std::int64_t value;
    };
    for (const Row& row :
         {Row{"-0", 0}, Row{"-0.0", 0}, Row{"1e2", 100}, Row{"1.25E+2", 125}, Row{"1200e-2", 12},
          Row{"-3.0", -3}, Row{"0e-50", 0}, Row{"1e18", 1'000'000'000'000'000'000},
          Row{"9007199254740993", 9007199254740993}, Row{"9223372036854775807", INT64_MAX},
          Row{"-9223372036854775808", INT64_MIN}}) {
        CAPTURE(row.json);
        const auto song = decodeSong(replaced(songJson, "215", row.json));
        REQUIRE(song.has_value());
        CHECK(song->duration == row.value);
        CHECK(decodeSong(encodeJson(*song)) == song);
    }
}

TEST_CASE("text that is no JSON document of UTF-8 is refused") {
    const auto refuses = [](const std::string& json) {
        CAPTURE(json);
        CHECK_FALSE(decodeGuest(json).has_value());
    };
    const std::string nul(1, '\0');
    for (const std::string& json :
         {std::string(), std::string("null"), replaced(guestJson, "Ana", nul),
          "[" + guestJson + "]", guestJson + "x", guestJson + guestJson, guestJson + nul,
          nul + guestJson}) {
        refuses(json);
    }
    // Escapes of half a surrogate pair among them.
    for (const std::string name : {"\n", "\x1F", R"(\x)", R"(\u12)", R"(\uD83C)", R"(\uD83C\u0041)",
                                   R"(\uDFA4)", R"(é\uDFA4\uD83C)", "\xC3"}) {
        refuses(replaced(guestJson, "Ana", name));
    }
    // In what is ignored too.
    for (const char* member : {"\"x\":\"\xC3\"", "\"x\":01", "\"x\":NaN", "\"x\":1e400", "\"x\":1.",
                               "\"x\":+1", "\"x\":1e", "\"x\":'y'", "\"x\" 1", "x:1", "", "/**/"}) {
        refuses(replaced(guestJson, R"({"id")", std::string("{") + member + R"(,"id")"));
    }
    refuses(replaced(guestJson, R"(dB"})", R"(dB",})"));
}

TEST_CASE("text keeps every character, and those outside ASCII are written as themselves") {
    const std::string texts[] = {"",         "é \U0001F3A4 \u2028", "\"\\/\b\f\n\r\t",
                                 "\x01\x7F", "\uD7FF\uE000\uFFFF",  std::string("a\0b", 3),
                                 "\\u0041"};
    for (const std::string& text : texts) {
        Guest guest{Uuid::random(), text, text, text, text};
        CHECK(decodeGuest(encodeJson(guest)) == guest);
    }
    const Guest guest{Uuid{}, "Zoé \U0001F3A4", "", "", std::nullopt};
    CHECK(encodeJson(guest).find("\"Zoé \U0001F3A4\"") != std::string::npos);
    CHECK(decodeGuest(replaced(guestJson, "Ana", R"(\uD83C\uDFA4)"))->name == "\U0001F3A4");
}

TEST_CASE("nesting is followed up to its limit and refused beyond, however deep") {
    const auto withNested = [](const std::string& json) {
        return replaced(guestJson, R"({"id")", R"({"x":)" + json + R"(,"id")");
    };
    const auto nested = [](const std::string& open, std::size_t depth, char close) {
        std::string json;
        for (std::size_t i = 0; i < depth; ++i) {
            json += open;
        }
        return json + "1" + std::string(depth, close);
    };
    const std::size_t room = maximumJsonDepth - 1;  // the guest's own object is the first level
    CHECK(decodeGuest(withNested(nested("[", room, ']'))).has_value());
    for (const std::size_t depth : {room + 1, std::size_t{1'000'000}}) {
        CAPTURE(depth);
        CHECK_FALSE(decodeGuest(withNested(nested("[", depth, ']'))).has_value());
        CHECK_FALSE(decodeGuest(withNested(nested(R"({"a":)", depth, '}'))).has_value());
        CHECK_FALSE(decodeGuest(std::string(depth, '[')).has_value());
    }
    // Brackets within text are no nesting, nor are those that are closed again.
    const Guest guest{Uuid{}, "\\\"" + std::string(1000, '['), "", "", std::nullopt};
    CHECK(decodeGuest(encodeJson(guest)) == guest);
    std::string flat = "[[]";
    for (int i = 0; i < 1000; ++i) {
        flat += ",[{}]";
    }
    CHECK(decodeGuest(withNested(flat + "]")).has_value());
}

TEST_CASE("a document cut anywhere is refused") {
    for (std::size_t length = 0; length < dataJson.size(); ++length) {
        CAPTURE(length);
        CHECK_FALSE(decodePersistedData(dataJson.substr(0, length)).has_value());
    }
}

TEST_CASE("random records come back equal") {
    test::RandomRecords random(20010101);
    for (int i = 0; i < 300; ++i) {
        CAPTURE(i);
        const Show show = random.show();
        CHECK(decodeShow(encodeJson(show)) == show);
        const PersistedData data = random.persistedData();
        const std::string json = encodeJson(data);
        CHECK(encodePersistedJson(data.shows, data.activeShowId, data.activeSongIndex) == json);
        const auto back = decodePersistedData(json);
        REQUIRE(back.has_value());
        CHECK(back->shows == data.shows);
        CHECK(back->activeShowId == data.activeShowId);
        CHECK(back->activeSongIndex == data.activeSongIndex);
    }
}

TEST_CASE("a new show has the usual labels") {
    const Show fresh;
    CHECK(fresh.name == "Nouveau show");
    CHECK(fresh.mics == std::vector<std::string>{"Guest 1", "Guest 2", "Guest 3", "Guest 4"});
    CHECK(fresh.iems == std::vector<std::string>{"Générique", "Perso"});
    CHECK(Show{}.id != Show{}.id);
}
