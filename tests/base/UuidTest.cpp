#include "base/Uuid.h"

#include <doctest/doctest.h>

#include <string>

using tessivo::Uuid;

TEST_CASE("a UUID is 36 characters, read in either case and written in upper case") {
    const auto uuid = Uuid::fromText("0f8fad5b-d9cb-469f-a165-70867728950e");
    REQUIRE(uuid.has_value());
    CHECK(uuid->toText() == "0F8FAD5B-D9CB-469F-A165-70867728950E");
    for (const char* text :
         {"", "0F8FAD5B-D9CB-469F-A165-70867728950", "0F8FAD5B-D9CB-469F-A165-70867728950EE",
          "0F8FAD5B-D9CB-469F-A165_70867728950E", "{F8FAD5B-D9CB-469F-A165-70867728950}",
          "0F8FAD5B-D9CB-469F-A165-7086772895 E", "0F8FAD5B-D9CB-469F-A165-70867728950G",
          "0F8FAD5-BD9CB-469F-A165-70867728950E", "0xFFAD5B-D9CB-469F-A165-70867728950E"}) {
        CAPTURE(text);
        CHECK_FALSE(Uuid::fromText(text).has_value());
    }
}

TEST_CASE("random UUIDs are distinct, of version 4 and of the RFC variant") {
    for (int i = 0; i < 100; ++i) {
        const Uuid uuid = Uuid::random();
        CHECK(uuid != Uuid::random());
        CHECK(uuid.toText()[14] == '4');
        CHECK(std::string("89AB").find(uuid.toText()[19]) != std::string::npos);
    }
}
