#include "platform/posix/FilePreferencesStore.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <thread>

using namespace tessivo;
using test::TemporaryFolder;

namespace {

const std::string key = "record";
using Names = std::set<std::string>;

/// Waits for the store's own thread to leave these files.
void waitForNames(const TemporaryFolder& folder, const Names& names) {
    for (int tries = 0; folder.names() != names && tries < 1000; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    CHECK(folder.names() == names);
}

}  // namespace

TEST_CASE("a value comes back in the next run, whatever its bytes") {
    const TemporaryFolder folder;
    const std::string binary("\0\xFF\n", 3);
    {
        FilePreferencesStore store(folder.path());
        CHECK(store.isWritable());
        CHECK_FALSE(store.data(key).has_value());
        store.setData(key, std::string(100'000, 'x'));
        store.setData(key, binary);
        store.setData("other", "");
        CHECK(store.data(key) == binary);
        waitForNames(folder, {"lock", key, "other"});  // on the disk while the store goes on
        CHECK(folder.read(key) == binary);
    }
    FilePreferencesStore store(folder.path());
    CHECK(store.isWritable());
    CHECK(store.data(key) == binary);
    CHECK(store.data("other") == "");
    CHECK(folder.names() == Names{"lock", key, "other"});
}

TEST_CASE("the user's own folder is made, and its files are the user's only") {
    const TemporaryFolder parent;
    ::setenv("XDG_CONFIG_HOME", parent.path("d\u00E9j\u00E0").c_str(), 1);
    const std::string folder = FilePreferencesStore::defaultFolder();
    ::unsetenv("XDG_CONFIG_HOME");
    CHECK(folder == parent.path("d\u00E9j\u00E0/tessivo"));
    const mode_t mask = ::umask(0);
    FilePreferencesStore store(folder);
    store.setData(key, "1");
    CHECK(store.setAside(key));
    store.setData(key, "2");
    ::umask(mask);
    CHECK(store.data(key) == "2");
    using std::filesystem::perms;
    CHECK(std::filesystem::status(folder).permissions() == perms::owner_all);
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        CHECK(entry.status().permissions() == (perms::owner_read | perms::owner_write));
    }
}

TEST_CASE("a folder that can't be made gives a store that keeps nothing and says so") {
    const TemporaryFolder parent;
    parent.write("file", "");
    FilePreferencesStore store(parent.path("file/folder"));
    CHECK_FALSE(store.isWritable());
    store.setData(key, "1");
    CHECK_FALSE(store.setAside(key));
    CHECK(parent.names() == Names{"file"});
}

TEST_CASE("values are set aside under names of their own, and none is lost") {
    const TemporaryFolder folder;
    FilePreferencesStore store(folder.path());
    CHECK_FALSE(store.setAside(key));
    for (const char* value : {"first", "second", "third"}) {
        store.setData(key, value);
        CHECK(store.setAside(key));
        CHECK_FALSE(store.data(key).has_value());
    }
    std::filesystem::remove(folder.path(key + ".illisible-2"));
    std::filesystem::create_symlink("nowhere", folder.path(key + ".illisible-2"));
    store.setData(key, "fourth");
    CHECK(store.setAside(key));
    CHECK(folder.read(key + ".illisible-1") == "first");
    CHECK(folder.read(key + ".illisible-3") == "third");
    CHECK(folder.read(key + ".illisible-4") == "fourth");
}

TEST_CASE("what can't be read gives empty bytes and can be set aside") {
    for (const bool isFolder : {true, false}) {
        CAPTURE(isFolder);
        const TemporaryFolder folder;
        if (isFolder) {
            std::filesystem::create_directories(folder.path(key + "/inside"));
        } else {  // a pipe that nobody writes to
            REQUIRE(::mkfifo(folder.path(key).c_str(), 0600) == 0);
        }
        FilePreferencesStore store(folder.path());
        CHECK(store.data(key) == "");
        CHECK(store.setAside(key));
        CHECK(std::filesystem::is_directory(folder.path(key + ".illisible-1")) == isFolder);
        store.setData(key, "1");
        CHECK(store.data(key) == "1");
        waitForNames(folder, {"lock", key, key + ".illisible-1"});
        CHECK(folder.read(key) == "1");
    }
}

TEST_CASE("a value that can't be put in its place is kept beside it until it can") {
    for (const int seconds : {0, 1}) {
        CAPTURE(seconds);
        const TemporaryFolder folder;
        std::filesystem::create_directories(folder.path(key + "/inside"));
        FilePreferencesStore(folder.path()).setData(key, "1");
        FilePreferencesStore store(folder.path());
        CHECK(store.data(key) == "1");
        CHECK_FALSE(store.setAside(key));  // it tries to sync first, and fails
        CHECK(store.data(key) == "1");
        std::this_thread::sleep_for(std::chrono::seconds(seconds));  // the store's thread fails too
        std::filesystem::remove_all(folder.path(key));
        waitForNames(folder, {"lock", key});
        CHECK(folder.read(key) == "1");
    }
}

TEST_CASE("a write that fails leaves the old value") {
    const TemporaryFolder folder;
    std::optional<FilePreferencesStore> store(folder.path());
    store->setData(key, "old");
    // No file may grow past this, as on a full disk.
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit tight{1000, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &tight);
    store->setData(key, std::string(4000, 'x'));
    ::setrlimit(RLIMIT_FSIZE, &before);
    CHECK(store->data(key) == "old");
    store.reset();
    CHECK(folder.names() == Names{"lock", key});
    CHECK(folder.read(key) == "old");
}

TEST_CASE("of what a killed run or a power cut left, the newest whole version is read") {
    const TemporaryFolder folder;
    RecentValue recent(folder.path(key));
    const std::string older(5000, 'o');
    const std::string newer(6000, 'n');
    REQUIRE(recent.write(older));
    const std::string olderFile = folder.read(key + ".recent-1");
    REQUIRE(recent.write(newer));
    const std::string newerFile = folder.read(key + ".recent-0");
    struct Remains {
        const char* what;
        std::optional<std::string> newerFile, olderFile;
        std::string expected;
    };
    const std::string zeros(newerFile.size(), '\0');
    const std::string start = newerFile.substr(0, 4096);
    const Remains table[] = {
        {"both whole", newerFile, olderFile, newer},
        {"the newer cut off", start, olderFile, older},
        {"the newer too long", newerFile + "n", olderFile, older},
        {"the newer empty", "", olderFile, older},
        {"the newer zeros", zeros, olderFile, older},
        {"the newer's start alone", start + zeros.substr(4096), olderFile, older},
        {"the newer's end alone", zeros.substr(0, 4096) + newerFile.substr(4096), olderFile, older},
        {"the newer half a header", newerFile.substr(0, 10), std::nullopt, "synced"},
        {"the older being written over", newerFile, zeros + "o", newer},
        {"both torn", zeros, olderFile.substr(0, 200), "synced"},
        {"neither made yet", std::nullopt, std::nullopt, "synced"},
    };
    for (const Remains& remains : table) {
        CAPTURE(remains.what);
        const TemporaryFolder left;
        left.write(key, "synced");
        left.write(key + ".nouveau", "half a val");
        if (remains.newerFile) {
            left.write(key + ".recent-0", *remains.newerFile);
        }
        if (remains.olderFile) {
            left.write(key + ".recent-1", *remains.olderFile);
        }
        CHECK(FilePreferencesStore(left.path()).data(key) == remains.expected);
        CHECK(left.read(key) == remains.expected);
        FilePreferencesStore(left.path()).setData(key, "next");
        CHECK(left.read(key) == "next");
        CHECK(left.names() == Names{"lock", key});
    }
}

TEST_CASE("a version is never written over an older one, which a power cut could bring back") {
    const TemporaryFolder folder;
    RecentValue recent(folder.path(key));
    REQUIRE(recent.write("first"));
    std::filesystem::create_hard_link(folder.path(key + ".recent-1"), folder.path("held"));
    const std::string first = folder.read("held");
    REQUIRE(recent.write("second"));
    REQUIRE(recent.write("third"));
    CHECK(folder.read("held") == first);
    CHECK(recent.read()->bytes == "third");
}

TEST_CASE("versions are forgotten up to the synced one, never a newer one") {
    const TemporaryFolder folder;
    RecentValue recent(folder.path(key));
    for (const std::string value : {"1", "2", "3"}) {
        REQUIRE(recent.write(value));
    }
    recent.forget(1);
    CHECK(folder.names().size() == 2);
    recent.forget(2);
    CHECK(recent.read()->bytes == "3");
    CHECK(folder.names().size() == 1);
    recent.forget(3);
    CHECK(folder.names().empty());
}

TEST_CASE("a second store reads and never writes, even once the first is gone") {
    const TemporaryFolder folder;
    std::optional<FilePreferencesStore> first(folder.path());
    first->setData(key, "first");
    FilePreferencesStore second(folder.path());
    CHECK_FALSE(second.isWritable());
    CHECK(second.data(key) == "first");
    second.setData(key, "second");
    CHECK_FALSE(second.setAside(key));
    first.reset();
    second.setData(key, "second");
    CHECK(second.data(key) == "first");
    CHECK(FilePreferencesStore(folder.path()).isWritable());
}
