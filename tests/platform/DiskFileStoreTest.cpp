#include "platform/qt/DiskFileStore.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

using namespace tessivo;
using test::TemporaryFolder;
namespace fs = std::filesystem;

TEST_CASE("files are written and read whole up to the maximum, under names of any language") {
    const TemporaryFolder folder;
    DiskFileStore store;
    const std::string binary("{\0\xFF}", 4);
    for (const std::string name : {"show.tessivo", "\u00C9t\u00E9 \U0001F3A4.tessivo"}) {
        CAPTURE(name);
        CHECK(store.writeAtomically(folder.path(name), "longer than what follows"));
        CHECK(store.writeAtomically(folder.path(name), binary));
        CHECK(store.read(folder.path(name), 4) == binary);
        CHECK(folder.read(name) == binary);
    }
    folder.write("long", std::string(200'000, 'x'));
    CHECK(store.read(folder.path("long"), 200'000)->size() == 200'000);
    CHECK_FALSE(store.read(folder.path("long"), 199'999).has_value());
    CHECK_FALSE(store.read("/proc/self/maps", 10).has_value());  // its size is given as 0
}

TEST_CASE("only regular files are read or replaced, and none is waited for") {
    const TemporaryFolder folder;
    DiskFileStore store;
    fs::create_directory(folder.path("folder"));
    REQUIRE(::mkfifo(folder.path("pipe").c_str(), 0600) == 0);
    fs::create_symlink("pipe", folder.path("link"));
    const auto names = folder.names();
    for (const char* name : {"folder", "pipe", "link", "absent/file", ""}) {
        CAPTURE(name);
        const std::string path = *name == '\0' ? std::string() : folder.path(name);
        const auto type = fs::status(path).type();
        CHECK_FALSE(store.read(path, 1000).has_value());
        CHECK_FALSE(store.writeAtomically(path, "x"));
        CHECK(fs::status(path).type() == type);
    }
    CHECK(folder.names() == names);
}

TEST_CASE("replacing keeps permissions, and the link that leads to the file") {
    const TemporaryFolder folder;
    DiskFileStore store;
    folder.write("file", "old");
    const auto permissions = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    fs::permissions(folder.path("file"), permissions);
    fs::create_symlink("file", folder.path("link"));
    CHECK(store.writeAtomically(folder.path("link"), "new"));
    CHECK(fs::is_symlink(folder.path("link")));
    CHECK(folder.read("file") == "new");
    CHECK(fs::status(folder.path("file")).permissions() == permissions);
}
