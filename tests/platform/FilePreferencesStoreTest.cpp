#include "platform/qt/FilePreferencesStore.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <string>

using namespace tessivo;
using test::TemporaryFolder;

namespace {

const std::string key = "record";
using Names = std::set<std::string>;

/// Lets no file of this process grow past a size while it lives, as a full disk would.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        oldHandler_ = ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        ::signal(SIGXFSZ, oldHandler_);
    }

private:
    rlimit before_{};
    sighandler_t oldHandler_ = nullptr;
};

/// Another process that owns the store on `folder` until it is killed.
class Holder {
public:
    explicit Holder(const std::string& folder) {
        int ready[2] = {};
        REQUIRE(::pipe(ready) == 0);
        process_ = ::fork();
        if (process_ == 0) {
            FilePreferencesStore store(folder);
            store.setData(key, "theirs");
            const char byte = store.isWritable() ? 'y' : 'n';
            const bool told = ::write(ready[1], &byte, 1) == 1;
            while (told) {
                ::pause();
            }
            ::_exit(1);
        }
        char byte = 0;
        REQUIRE(::read(ready[0], &byte, 1) == 1);
        REQUIRE(byte == 'y');
        ::close(ready[0]);
        ::close(ready[1]);
    }
    void kill() const {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }

private:
    pid_t process_ = -1;
};

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
    }
    FilePreferencesStore store(folder.path());
    CHECK(store.isWritable());
    CHECK(store.data(key) == binary);
    CHECK(store.data("other") == "");
    CHECK(folder.names() == Names{"lock", key, key + ".precedent", "other"});
}

TEST_CASE("the folder is made, and its files are the user's only") {
    const TemporaryFolder parent;
    const std::string folder = parent.path("d\u00E9j\u00E0/vu");
    const mode_t mask = ::umask(0);
    FilePreferencesStore store(folder);
    store.setData(key, "1");
    ::umask(mask);
    CHECK(store.data(key) == "1");
    using std::filesystem::perms;
    CHECK(std::filesystem::status(folder).permissions() == perms::owner_all);
    CHECK(std::filesystem::status(folder + "/" + key).permissions() ==
          (perms::owner_read | perms::owner_write));
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

TEST_CASE("what can't be read gives empty bytes, isn't overwritten and can be set aside") {
    const TemporaryFolder folder;
    FilePreferencesStore store(folder.path());
    const std::string path = folder.path(key);
    SUBCASE("a folder") {
        std::filesystem::create_directory(path);
        std::filesystem::create_directory(path + "/inside");
        CHECK(store.data(key) == "");
        store.setData(key, "1");
        CHECK(store.data(key) == "");
        CHECK(store.setAside(key));
        CHECK(std::filesystem::exists(path + ".illisible-1/inside"));
    }
    SUBCASE("a pipe without a writer") {
        REQUIRE(::mkfifo(path.c_str(), 0600) == 0);
        CHECK(store.data(key) == "");
        CHECK(store.setAside(key));
    }
    SUBCASE("a file without permission") {
        store.setData(key, "0");
        std::filesystem::permissions(path, std::filesystem::perms::none);
        CHECK(store.data(key) == (::geteuid() == 0 ? "0" : ""));  // nothing is forbidden to root
        CHECK(store.setAside(key));
    }
    store.setData(key, "1");
    CHECK(store.data(key) == "1");
    CHECK(folder.names() == Names{"lock", key, key + ".illisible-1"});
}

TEST_CASE("a write that fails leaves the old value and nothing beside it") {
    const TemporaryFolder folder;
    FilePreferencesStore store(folder.path());
    store.setData(key, "old");
    {
        const FileSizeLimit limit(1000);
        store.setData(key, std::string(4000, 'x'));
    }
    CHECK(store.data(key) == "old");
    CHECK(folder.names() == Names{"lock", key});
    store.setData(key, "new");
    CHECK(store.data(key) == "new");
}

TEST_CASE("a new value is never written over the present one") {
    const TemporaryFolder folder;
    FilePreferencesStore store(folder.path());
    for (const char* value : {"first", "second", "third"}) {
        std::ifstream present(folder.path(key));
        const std::string before = store.data(key).value_or("");
        store.setData(key, value);
        std::string read;
        std::getline(present, read);
        CHECK(read == before);
        CHECK(store.data(key) == value);
    }
}

TEST_CASE("a half-written value of a killed run is never read") {
    const TemporaryFolder folder;
    folder.write(key, "whole");
    folder.write(key + ".precedent", "ha");
    FilePreferencesStore store(folder.path());
    CHECK(store.data(key) == "whole");
    store.setData(key, "w");
    CHECK(store.data(key) == "w");
    CHECK(folder.names() == Names{"lock", key, key + ".precedent"});
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

TEST_CASE("the store of another process is respected, and free again once that is killed") {
    const TemporaryFolder folder;
    const Holder holder(folder.path());
    {
        FilePreferencesStore store(folder.path());
        CHECK_FALSE(store.isWritable());
        store.setData(key, "mine");
        CHECK(store.data(key) == "theirs");
    }
    holder.kill();
    FilePreferencesStore store(folder.path());
    CHECK(store.isWritable());
    store.setData(key, "mine");
    CHECK(store.data(key) == "mine");
}

TEST_CASE("the default folder is in the configuration folder") {
    const TemporaryFolder folder;
    ::setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    CHECK(FilePreferencesStore::defaultFolder() == folder.path("tessivo"));
    ::unsetenv("XDG_CONFIG_HOME");
}
