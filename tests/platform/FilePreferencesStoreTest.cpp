#include "platform/posix/FilePreferencesStore.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <utility>

using namespace tessivo;
using test::TemporaryFolder;
namespace fs = std::filesystem;

namespace {

const std::string key = "record";
using Names = std::set<std::string>;

/// A store that holds its folder.
struct Holder : FilePreferencesStore {
    explicit Holder(const TemporaryFolder& folder) : FilePreferencesStore(folder.path()) {
        CHECK(takeHold());
    }
};

void waitUntil(const std::function<bool()>& isSo) {
    for (int tries = 0; !isSo() && tries < 1000; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    CHECK(isSo());
}

/// Waits for the store's own thread to leave these files.
void waitForNames(const TemporaryFolder& folder, const Names& names) {
    waitUntil([&] { return folder.names() == names; });
}

/// Stands where the key's file has to come, so that no version gets there.
void block(const TemporaryFolder& folder) {
    fs::create_directories(folder.path(key + "/inside"));
}

}  // namespace

TEST_CASE("a value comes back in the next run, whatever its bytes") {
    const TemporaryFolder folder;
    const std::string binary("\0\xFF\n", 3);
    {
        Holder store(folder);
        CHECK_FALSE(store.data(key).has_value());
        store.setData(key, std::string(100'000, 'x'));
        store.setData(key, binary);
        store.setData("other", "");
        CHECK(store.data(key) == binary);
        waitForNames(folder, {"lock", key, "other"});  // on the disk while the store goes on
        CHECK(folder.read(key) == binary);
        CHECK(store.isKeeping());
    }
    Holder store(folder);
    CHECK(store.data(key) == binary);
    CHECK(store.data("other") == "");
    CHECK(folder.names() == Names{"lock", key, "other"});
}

TEST_CASE("values that never cease to come are settled all the same") {
    const TemporaryFolder folder;
    Holder store(folder);
    waitUntil([&, number = 0]() mutable {
        store.setData(key, std::to_string(++number));
        return fs::exists(folder.path(key));
    });
}

TEST_CASE("the folder is made, also when it is removed, and is the user's only") {
    const TemporaryFolder parent;
    const std::string folder = parent.path("d\u00E9j\u00E0/tessivo");
    const mode_t mask = ::umask(0);
    FilePreferencesStore store(folder);
    CHECK(store.takeHold());
    for (const char* value : {"1", "2"}) {
        store.setData(key, value);
        CHECK(store.setAside(key));
        store.setData(key, value);
        CHECK(store.isKeeping());
        CHECK(FilePreferencesStore(folder).data(key) == value);
        CHECK_FALSE(FilePreferencesStore(folder).takeHold());
        using std::filesystem::perms;
        CHECK(fs::status(folder).permissions() == perms::owner_all);
        for (const auto& entry : fs::directory_iterator(folder)) {
            CHECK(entry.status().permissions() == (perms::owner_read | perms::owner_write));
        }
        fs::remove_all(parent.path("d\u00E9j\u00E0"));
    }
    ::umask(mask);
    FilePreferencesStore other(folder);
    CHECK(other.takeHold());
    store.setData(key, "3");  // the folder is another's now
    CHECK_FALSE(store.isKeeping());
    CHECK_FALSE(store.setAside(key));
    CHECK_FALSE(other.data(key).has_value());

    parent.write("file", "");
    FilePreferencesStore nowhere(parent.path("file/folder"));
    CHECK_FALSE(nowhere.takeHold());
    CHECK_FALSE(nowhere.isKeeping());
}

TEST_CASE("a value that is taken away stays away, whatever is being synced") {
    const TemporaryFolder folder;
    for (const int wait : {0, 300, 301, 302, 303, 304, 330}) {  // syncing begins after 300
        CAPTURE(wait);
        {
            Holder store(folder);
            store.setData(key, "1");
            std::this_thread::sleep_for(std::chrono::milliseconds(wait));
            store.setData(key, "2");
            FilePreferencesStore(folder.path()).remove(key);  // which doesn't hold it
            CHECK(store.data(key) == "2");
            store.remove(key);
            CHECK_FALSE(store.data(key).has_value());
            CHECK(store.isKeeping());
        }
        CHECK(folder.names() == Names{"lock"});
    }
}

TEST_CASE("values are set aside under names of their own, and none is lost") {
    const TemporaryFolder folder;
    Holder store(folder);
    CHECK(store.setAside(key));  // what isn't there needs no other name
    for (const char* value : {"first", "second", "third"}) {
        store.setData(key, value);
        CHECK(store.setAside(key));
        CHECK_FALSE(store.data(key).has_value());
    }
    fs::remove(folder.path(key + ".illisible-2"));
    fs::create_symlink("nowhere", folder.path(key + ".illisible-2"));
    store.setData(key, "fourth");
    waitForNames(folder,
                 {"lock", key, key + ".illisible-1", key + ".illisible-2", key + ".illisible-3"});
    CHECK(store.setAside(key));
    CHECK(folder.read(key + ".illisible-1") == "first");
    CHECK(folder.read(key + ".illisible-3") == "third");
    CHECK(folder.read(key + ".illisible-4") == "fourth");
}

TEST_CASE("what can't be read, not even waited for, gives empty bytes and can be set aside") {
    const TemporaryFolder folder;
    REQUIRE(::mkfifo(folder.path(key).c_str(), 0600) == 0);
    Holder store(folder);
    CHECK(store.data(key) == "");
    CHECK(store.setAside(key));
    store.setData(key, "1");
    waitForNames(folder, {"lock", key, key + ".illisible-1"});
    CHECK(folder.read(key) == "1");
    CHECK(fs::is_fifo(folder.path(key + ".illisible-1")));
}

TEST_CASE("a value that can't be put in its place is told and kept beside it until one can") {
    const TemporaryFolder folder;
    block(folder);
    Holder(folder).setData(key, "1");
    Holder store(folder);
    CHECK(store.data(key) == "1");
    waitUntil([&] { return !store.isKeeping(); });
    store.setData(key, "2");
    CHECK_FALSE(store.isKeeping());  // not before it is in its place
    CHECK(store.data(key) == "2");
    fs::remove_all(folder.path(key));
    store.setData(key, "3");
    waitForNames(folder, {"lock", key});
    CHECK(folder.read(key) == "3");
    CHECK(store.isKeeping());
}

TEST_CASE("a write that fails is told and leaves the old value, until one succeeds") {
    const TemporaryFolder folder;
    std::optional<Holder> store(folder);
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
    waitForNames(folder, {"lock", key});
    CHECK_FALSE(store->isKeeping());  // "old" is on the disk, but it isn't what was set
    store->setData(key, "new");
    CHECK(store->isKeeping());
    store.reset();
    CHECK(folder.names() == Names{"lock", key});
    CHECK(folder.read(key) == "new");
}

TEST_CASE("of what a killed run or a power cut left, the newest whole version is read") {
    const std::string older(5000, 'o');
    const std::string newer(6000, 'n');
    const TemporaryFolder made;
    block(made);
    Holder(made).setData(key, older);
    const std::string olderName = *made.names().rbegin();
    Holder(made).setData(key, newer);
    const std::string newerName = *made.names().rbegin();
    REQUIRE(olderName < newerName);
    const std::string zeros(newer.size(), '\0');
    const std::string start = newer.substr(0, 4096);
    const struct {
        const char* what;
        std::optional<std::string> newerFile, olderFile;
        std::string expected;
    } table[] = {
        {"both whole", newer, older, newer},
        {"the newer cut off", start, older, older},
        {"the newer empty", "", older, older},
        {"the newer's start alone", start + zeros.substr(4096), older, older},
        {"the newer's end alone", zeros.substr(0, 4096) + newer.substr(4096), older, older},
        {"the newer alone", newer, std::nullopt, newer},
        {"both torn", zeros, older.substr(0, 200), "synced"},
    };
    for (const auto& row : table) {
        for (const bool isChanged : {false, true}) {
            CAPTURE(row.what);
            const TemporaryFolder left;
            left.write(key, "synced");
            left.write(key + ".recent-1", "not ours");
            for (const auto& [name, bytes] :
                 {std::pair(newerName, row.newerFile), std::pair(olderName, row.olderFile)}) {
                if (bytes) {
                    left.write(name, *bytes);
                }
            }
            CHECK(FilePreferencesStore(left.path()).data(key) == row.expected);
            {
                Holder store(left);
                if (isChanged) {
                    store.setData(key, "next");
                } else {
                    CHECK(store.data(key) == row.expected);
                }
            }
            CHECK(left.read(key) == (isChanged ? "next" : row.expected));
            CHECK(left.names() == Names{"lock", key, key + ".recent-1"});
        }
    }
}
