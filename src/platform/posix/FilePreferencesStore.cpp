#include "platform/posix/FilePreferencesStore.h"

#include "platform/posix/RegularFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <utility>

namespace tessivo {
namespace {

/// For how long changes gather before they are synced together.
constexpr std::chrono::milliseconds gathering(300);

void makeFolder(const std::string& folder) {
    std::error_code ignored;
    if (std::filesystem::create_directories(folder, ignored)) {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, ignored);
    }
}

/// Opens and locks the file; closed when another holds the lock. The lock is the kernel's, not the
/// file's existence or content: it ends with the process even when that is killed, and a power cut
/// leaves nothing that looks like an owner.
FileDescriptor lockFile(const std::string& path) {
    FileDescriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, ownerOnly));
    if (file.isOpen() && ::flock(file.value(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        return FileDescriptor();
    }
    // A file system that can't lock at all is no reason to lose the shows.
    return file;
}

/// Makes renamings last through a power cut.
void syncFolder(const std::string& path) {
    const FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) {
        ::fsync(folder.value());
    }
}

}  // namespace

bool FilePreferencesStore::takeHold() {
    if (!lock_.isOpen()) {
        makeFolder(folder_);
        lock_ = lockFile(pathOf("lock"));
    }
    if (lock_.isOpen() && !settler_.joinable()) {
        settler_ = std::jthread([this](const std::stop_token& stop) { settleUntil(stop); });
    }
    return lock_.isOpen();
}

bool FilePreferencesStore::isKeeping() const {
    const std::lock_guard guard(mutex_);
    return lock_.isOpen() && std::ranges::none_of(values_, [](const auto& entry) {
               return entry.second.isUnwritten || entry.second.isUnsynced;
           });
}

std::optional<std::string> FilePreferencesStore::data(std::string_view key) {
    if (lock_.isOpen()) {
        const std::lock_guard guard(mutex_);
        valueOf(key);
    }
    // A version that gets the key's name meanwhile is found under that.
    for (const std::string& path : versionsOf(pathOf(key))) {
        if (auto bytes = readVersion(path)) {
            return bytes;
        }
    }
    std::string bytes;
    switch (readRegularFile(pathOf(key), SIZE_MAX, bytes)) {
        case FileReading::Done:
            return bytes;
        case FileReading::Absent:
            return std::nullopt;
        case FileReading::Failed:
            break;
    }
    return std::string();
}

void FilePreferencesStore::setData(std::string_view key, std::string_view bytes) {
    if (!holdsStill()) {
        return;
    }
    const std::lock_guard guard(mutex_);
    Value& value = valueOf(key);
    auto written = writeVersion(pathOf(key), ++lastNumber_, bytes);
    value.isUnwritten = !written;
    if (written) {
        if (value.newest && !value.newest->isBeingSynced) {
            ::unlink(value.newest->path.c_str());
        }
        value.newest = std::make_shared<Version>(Version{std::move(*written)});
        changed_.notify_one();
    }
}

void FilePreferencesStore::remove(std::string_view key) {
    if (!holdsStill()) {
        return;
    }
    const std::lock_guard guard(mutex_);
    // Also the older version that is perhaps being synced, which would get the key's name.
    for (const std::string& path : versionsOf(pathOf(key))) {
        ::unlink(path.c_str());
    }
    ::unlink(pathOf(key).c_str());
    values_[std::string(key)] = {};
}

bool FilePreferencesStore::setAside(std::string_view key) {
    if (!holdsStill()) {
        return false;
    }
    const std::lock_guard guard(mutex_);
    Value& value = valueOf(key);
    std::string aside;
    struct stat status {};
    int number = 0;
    do {
        aside = pathOf(key) + ".illisible-" + std::to_string(++number);
    } while (::lstat(aside.c_str(), &status) == 0);
    const std::string path = value.newest ? value.newest->path : pathOf(key);
    if (std::rename(path.c_str(), aside.c_str()) != 0 && errno != ENOENT) {
        return false;
    }
    value.newest.reset();
    return true;
}

/// Whether the folder is still held. Who removed it removed the lock with it; then it is made
/// again, unless another program was faster: what that one writes isn't to be replaced.
bool FilePreferencesStore::holdsStill() {
    struct stat status {};
    if (lock_.isOpen() && ::fstat(lock_.value(), &status) == 0 && status.st_nlink == 0) {
        lock_ = FileDescriptor();
        takeHold();
    }
    return lock_.isOpen();
}

/// The value under `key`. What a killed run left unsynced is to be synced by this one, and its
/// older or torn versions go.
FilePreferencesStore::Value& FilePreferencesStore::valueOf(std::string_view key) {
    const auto [entry, isNew] = values_.try_emplace(std::string(key));
    Value& value = entry->second;
    if (!isNew) {
        return value;
    }
    for (const std::string& path : versionsOf(pathOf(key))) {
        lastNumber_ = std::max(lastNumber_, numberOfVersion(path));
        if (value.newest || !readVersion(path)) {
            ::unlink(path.c_str());
            continue;
        }
        value.newest = std::make_shared<Version>(
            Version{{path, FileDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC))}});
        changed_.notify_one();
    }
    return value;
}

void FilePreferencesStore::settleUntil(const std::stop_token& stop) {
    const auto isUnsettled = [](const auto& entry) {
        const auto& newest = entry.second.newest;
        return newest && !newest->hasFailed;
    };
    std::unique_lock lock(mutex_);
    // Once asked to stop, this waits no more and ends when nothing is left to try.
    while (changed_.wait(lock, stop, [&] { return std::ranges::any_of(values_, isUnsettled); })) {
        changed_.wait_for(lock, stop, gathering, [] { return false; });
        settle(lock);
    }
}

/// Brings what has changed to the disk. The main thread may go on changing it meanwhile: it writes
/// other files, and waits for none of this.
void FilePreferencesStore::settle(std::unique_lock<std::mutex>& lock) {
    for (auto& [key, value] : values_) {
        const std::shared_ptr<Version> version = value.newest;
        if (!version || version->hasFailed) {
            continue;
        }
        version->isBeingSynced = true;
        lock.unlock();
        const bool isSynced = ::fdatasync(version->file.value()) == 0;
        lock.lock();
        version->isBeingSynced = false;
        const bool isNewest = value.newest == version;
        if (isSynced && std::rename(version->path.c_str(), pathOf(key).c_str()) == 0) {
            value.isUnsynced = false;
            if (isNewest) {
                value.newest.reset();
            }
        } else if (isNewest) {
            value.isUnsynced = version->hasFailed = true;
        } else {
            ::unlink(version->path.c_str());
        }
    }
    lock.unlock();
    syncFolder(folder_);
    lock.lock();
}

std::string FilePreferencesStore::pathOf(std::string_view name) const {
    return folder_ + "/" + std::string(name);
}

}  // namespace tessivo
