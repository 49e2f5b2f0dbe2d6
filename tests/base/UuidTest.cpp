#include "base/Uuid.h"

#include <doctest/doctest.h>

#include <set>

using tessivo::Uuid;

TEST_CASE("a UUID reads either case and writes upper case") {
    const auto uuid = Uuid::fromText("0f8fad5b-d9cb-469f-a165-70867728950e");
    REQUIRE(uuid.has_value());
    CHECK(uuid->toText() == "0F8FAD5B-D9CB-469F-A165-70867728950E");
}

TEST_CASE("only the 36-character hyphenated form is a UUID") {
    for (const char* text :
         {"", "0F8FAD5B-D9CB-469F-A165-70867728950", "0F8FAD5B-D9CB-469F-A165-70867728950EE",
          "0F8FAD5BD9CB469FA16570867728950E0000", "0F8FAD5B-D9CB-469F-A165_70867728950E",
          "{F8FAD5B-D9CB-469F-A165-70867728950}", "0F8FAD5B-D9CB-469F-A165-70867728950G"}) {
        CAPTURE(text);
        CHECK_FALSE(Uuid::fromText(text).has_value());
    }
}

TEST_CASE("random UUIDs are distinct, of version 4 and of the RFC variant") {
    std::set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const Uuid uuid = Uuid::random();
        CHECK(seen.insert(uuid).second);
        const std::string text = uuid.toText();
        CHECK(text[14] == '4');
        CHECK(std::string("89AB").find(text[19]) != std::string::npos);
        CHECK(Uuid::fromText(text) == uuid);
    }
}
