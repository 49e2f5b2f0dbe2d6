#include "platform/posix/SafeFileName.h"

#include <doctest/doctest.h>

#include <string>

using tessivo::safeFileName;

TEST_CASE("a proposed name is made safe and keeps its extension") {
    std::string many = "\u00E9";
    while (many.size() < 400) {
        many += many;
    }
    const struct {
        std::string name;
        std::string safe;
    } table[] = {
        {"Gala.tessivo", "Gala.tessivo"},
        {"Gala", "Gala.tessivo"},
        {"Tourn\u00E9e 2.1.tessivo", "Tourn\u00E9e 2.1.tessivo"},
        {"../../etc/passwd.tessivo", "-..-etc-passwd.tessivo"},
        {".cach\u00E9.tessivo", "cach\u00E9.tessivo"},
        {"", "Sans titre.tessivo"},
        {" . .tessivo", "Sans titre.tessivo"},
        {"  Gala \n.tessivo", "Gala -.tessivo"},
        {std::string("a\0b\x7F.tessivo", 12), "a-b-.tessivo"},
        // 255 bytes less 8 for the ending are 247: 123 letters of two bytes, no half one.
        {many + ".tessivo", many.substr(0, 246) + ".tessivo"},
    };
    for (const auto& row : table) {
        CAPTURE(row.name);
        CHECK(safeFileName(row.name, "tessivo") == row.safe);
    }
}
