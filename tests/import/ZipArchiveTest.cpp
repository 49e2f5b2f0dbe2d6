#include "import/ZipArchive.h"
#include "support/ZipWriter.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using namespace tessivo;
using namespace tessivo::test;

namespace {

std::optional<std::string> contentOf(const ZipEntry& entry, std::string_view archive) {
    std::string content;
    const bool extracted = extract(entry, archive, [&](std::string_view piece) {
        content += piece;
        return true;
    });
    return extracted ? std::optional(content) : std::nullopt;
}

std::optional<std::string> onlyContentOf(std::string_view archive) {
    return contentOf(parseCentralDirectory(archive).at(0), archive);
}

std::vector<std::string> namesIn(std::string_view archive) {
    std::vector<std::string> names;
    for (const ZipEntry& entry : parseCentralDirectory(archive)) {
        names.push_back(entry.name);
    }
    return names;
}

std::string longText() {
    std::string text;
    for (int i = 0; i < 100'000; ++i) {
        text += std::to_string(i * 7919 % 10007) + ' ';
    }
    return text;
}

void replaceAt(std::string& bytes, std::size_t offset, const std::string& replacement) {
    bytes.replace(offset, replacement.size(), replacement);
}

}  // namespace

TEST_CASE("every member comes back as it was put in, whatever the writer's habits") {
    const std::string text = longText();  // several pieces long
    const std::vector<ZipMember> members = {
        {.name = "stored", .content = text, .method = 0},
        {.name = "deflated", .content = text},
        {.name = "été/descripteur", .content = "un peu", .hasDataDescriptor = true},
        {.name = "extra", .content = "x", .localExtra = "longer extra", .directoryExtra = "extra"},
        {.name = "comment", .content = "y", .method = 0, .comment = "PK\x05\x06 in a comment"},
        {.name = "empty", .content = "", .method = 0},
        {.name = "\xE9t\xE9", .content = "a name that isn't UTF-8"},
    };
    const std::string archive = zipOf(members, std::string(100'000, 'c'));
    const std::vector<ZipEntry> entries = parseCentralDirectory(archive);
    REQUIRE(entries.size() == members.size());
    for (std::size_t i = 0; i < members.size(); ++i) {
        CAPTURE(i);
        CHECK(entries[i].name == (i == 6 ? "" : members[i].name));
        CHECK(contentOf(entries[i], archive) == members[i].content);
    }
}

TEST_CASE("the end record is the one nearest the end, up to the 22nd byte from it") {
    const std::string end = "PK\x05\x06" + std::string(18, '\0');
    const std::string beyond = "PK\x05\x06" + std::string(18, '\xFF');
    const std::string archive = zipOf({{.name = "a"}});
    for (const std::string& bytes :
         {std::string(1000, 'x'), end.substr(0, 21), end, beyond, archive + end}) {
        CAPTURE(bytes.size());
        CHECK(namesIn(bytes).empty());
    }
    CHECK(namesIn(archive + end.substr(0, 21)).size() == 1);
}

TEST_CASE("a directory that is cut short gives the members before the cut") {
    std::string archive = zipOf({{.name = "a"}, {.name = "b"}, {.name = "c"}});
    const std::size_t end = archive.rfind("PK\x05\x06");
    replaceAt(archive, end + 10, littleEndian(5, 2));
    CHECK(namesIn(archive) == std::vector<std::string>{"a", "b", "c"});
    // A name that would run past the end of the archive.
    const std::size_t lastRecord = archive.rfind("PK\x01\x02");
    replaceAt(archive, lastRecord + 28, littleEndian(0xFFFF, 2));
    CHECK(namesIn(archive) == std::vector<std::string>{"a", "b"});
}

TEST_CASE("the claimed size cuts a deflated member and is ignored for a stored one") {
    const std::string text(1000, 'a');
    struct Row {
        std::uint16_t method;
        std::int64_t sizeClaimError;
        std::size_t length;
    };
    const Row rows[] = {
        {8, 0, 1000},   {8, -16, 1000},   {8, -17, 999}, {8, -1000, 16},
        {8, 100, 1000}, {0, -1000, 1000}, {0, 1, 1000},  {8, 0xFFFFFFFF - 1000, 1000}};
    for (const Row& row : rows) {
        CAPTURE(row.sizeClaimError);
        CHECK(onlyContentOf(zipOf({{.name = "a",
                                    .content = text,
                                    .method = row.method,
                                    .sizeClaimError = row.sizeClaimError}})) ==
              text.substr(0, row.length));
    }
}

TEST_CASE("a member that can't be extracted is absent") {
    struct Row {
        const char* fault;
        ZipMember member;
        std::size_t field;  ///< the offset in the directory record of what is overwritten
        std::string value;
    };
    const ZipMember small{.name = "a", .content = "x"};
    const Row rows[] = {
        {"deflated to nothing", {.name = "a"}, 0, "PK"},
        {"an unknown method", small, 10, littleEndian(12, 2)},
        {"not a DEFLATE stream",
         {.name = "a", .content = "\xFF\xFF", .method = 0},
         10,
         littleEndian(8, 2)},
        {"a stream without its end",
         {.name = "a", .content = longText()},
         20,
         littleEndian(1000, 4)},
        {"data past the end", small, 20, littleEndian(0xFFFFFFFF, 4)},
        {"a header past the end", small, 42, littleEndian(0xFFFFFFFF, 4)},
    };
    for (const Row& row : rows) {
        CAPTURE(row.fault);
        std::string archive = zipOf({row.member});
        replaceAt(archive, archive.rfind("PK\x01\x02") + row.field, row.value);
        CHECK_FALSE(onlyContentOf(archive).has_value());
    }
}

TEST_CASE("a header within the last 30 bytes is out of reach, one just before them is not") {
    std::string archive = zipOf({{.name = "", .content = "", .method = 0}});
    ZipEntry entry = parseCentralDirectory(archive).at(0);
    archive.resize(30);
    CHECK(contentOf(entry, archive) == "");
    entry.localHeaderOffset = 1;
    CHECK_FALSE(contentOf(entry, archive).has_value());
}

TEST_CASE("a receiver that has had enough gets no more") {
    for (const std::uint16_t method : {std::uint16_t{0}, std::uint16_t{8}}) {
        const std::string archive = zipOf({{.name = "a", .content = longText(), .method = method}});
        int pieces = 0;
        CHECK(extract(parseCentralDirectory(archive).at(0), archive, [&](std::string_view) {
            ++pieces;
            return false;
        }));
        CHECK(pieces == 1);
    }
}

TEST_CASE("an archive cut anywhere is read within its bounds") {
    const std::string archive = zipOf({{.name = "a", .content = "stored", .method = 0},
                                       {.name = "b", .content = std::string(100, 'b')}});
    CHECK(namesIn(archive).size() == 2);
    for (std::size_t size = 0; size < archive.size(); ++size) {
        const std::vector<char> exactly(archive.data(), archive.data() + size);  // nothing behind
        CHECK(namesIn({exactly.data(), size}).empty());
    }
}
