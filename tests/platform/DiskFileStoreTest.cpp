#include "platform/qt/DiskFileStore.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

using namespace tessivo;
using test::TemporaryFolder;
namespace fs = std::filesystem;

TEST_CASE("files are written and read whole, under names of any language") {
    const TemporaryFolder folder;
    DiskFileStore store;
    const std::string binary("{\0\xFF}", 4);
    for (const std::string name : {"show.tessivo", "\u00C9t\u00E9 \U0001F3A4.tessivo", ".x"}) {
        CAPTURE(name);
        CHECK(store.writeAtomically(folder.path(name), "longer than what follows"));
        CHECK(store.writeAtomically(folder.path(name), binary));
        CHECK(store.read(folder.path(name), 100) == binary);
        CHECK(folder.read(name) == binary);
    }
    CHECK(store.writeAtomically(folder.path("empty"), ""));
    CHECK(store.read(folder.path("empty"), 0) == "");
    CHECK(folder.names().size() == 4);
}

TEST_CASE("a file longer than the maximum isn't read") {
    const TemporaryFolder folder;
    DiskFileStore store;
    folder.write("file", std::string(200'000, 'x'));
    CHECK(store.read(folder.path("file"), 200'000)->size() == 200'000);
    CHECK_FALSE(store.read(folder.path("file"), 199'999).has_value());
    CHECK_FALSE(store.read("/proc/self/maps", 10).has_value());  // its size is given as 0
}

TEST_CASE("only regular files are read or replaced, and none is waited for") {
    const TemporaryFolder folder;
    DiskFileStore store;
    fs::create_directory(folder.path("folder"));
    REQUIRE(::mkfifo(folder.path("pipe").c_str(), 0600) == 0);
    fs::create_symlink("/dev/zero", folder.path("device"));
    const auto names = folder.names();
    for (const char* name : {"folder", "pipe", "device"}) {
        CAPTURE(name);
        const auto type = fs::status(folder.path(name)).type();
        CHECK_FALSE(store.read(folder.path(name), 1000).has_value());
        CHECK_FALSE(store.writeAtomically(folder.path(name), "x"));
        CHECK(fs::status(folder.path(name)).type() == type);
    }
    for (const std::string& path : {folder.path("absent/file"), std::string()}) {
        CHECK_FALSE(store.read(path, 1000).has_value());
        CHECK_FALSE(store.writeAtomically(path, "x"));
    }
    CHECK_FALSE(store.read(folder.path("absent"), 1000).has_value());
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

    const mode_t mask = ::umask(022);
    CHECK(store.writeAtomically(folder.path("fresh"), "x"));
    ::umask(mask);
    CHECK(fs::status(folder.path("fresh")).permissions() == (permissions | fs::perms::others_read));
}
