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

/// Gives the file these bytes, and waits until they are on the disk.
bool writeSynced(const std::string& path, std::string_view bytes) {
    const FileDescriptor file(openToWrite(path));
    return file.isOpen() && writeAll(file.value(), bytes) &&
           ::ftruncate(file.value(), static_cast<off_t>(bytes.size())) == 0 &&
           ::fdatasync(file.value()) == 0;
}

}  // namespace

FilePreferencesStore::FilePreferencesStore(std::string folder) : folder_(std::move(folder)) {
    makeFolder(folder_);
    lock_ = lockFile(pathOf("lock"));
    if (isWritable()) {
        settler_ = std::jthread([this](const std::stop_token& stop) { settleUntil(stop); });
    }
}

std::optional<std::string> FilePreferencesStore::data(std::string_view key) {
    const std::lock_guard guard(mutex_);
    Value& value = valueOf(key);
    if (auto version = value.recent.read()) {
        return std::move(version->bytes);
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
    if (!isWritable()) {
        return;
    }
    const std::lock_guard guard(mutex_);
    Value& value = valueOf(key);
    if (const auto number = value.recent.write(bytes)) {
        value.unsettled = *number;
        value.bytes.assign(bytes);
        changed_.notify_one();
    }
}

bool FilePreferencesStore::setAside(std::string_view key) {
    if (!isWritable()) {
        return false;
    }
    settle();
    const std::lock_guard guard(mutex_);
    if (valueOf(key).recent.read()) {
        return false;
    }
    const std::string path = pathOf(key);
    std::string aside;
    struct stat status {};
    int number = 0;
    do {
        aside = path + ".illisible-" + std::to_string(++number);
    } while (::lstat(aside.c_str(), &status) == 0);
    if (std::rename(path.c_str(), aside.c_str()) != 0) {
        return false;
    }
    syncFolder();
    return true;
}

/// The value under `key`; one that a killed run left unsynced is to be synced by this one.
FilePreferencesStore::Value& FilePreferencesStore::valueOf(std::string_view key) {
    const auto known = values_.find(key);
    if (known != values_.end()) {
        return known->second;
    }
    Value value{RecentValue(pathOf(key)), std::nullopt, std::string()};
    if (auto version = value.recent.read()) {
        value.unsettled = version->number;
        value.bytes = std::move(version->bytes);
        changed_.notify_one();
    }
    return values_.emplace(key, std::move(value)).first->second;
}

void FilePreferencesStore::settleUntil(const std::stop_token& stop) {
    const auto isUnsettled = [](const auto& entry) { return entry.second.unsettled.has_value(); };
    std::unique_lock lock(mutex_);
    while (changed_.wait(lock, stop, [&] { return std::ranges::any_of(values_, isUnsettled); })) {
        changed_.wait_for(lock, stop, gathering, [] { return false; });
        const bool isLast = stop.stop_requested();
        lock.unlock();
        settle();
        if (isLast) {
            return;  // what couldn't be written now is there at the next start, unsynced
        }
        lock.lock();
    }
}

/// Brings what has changed to the disk. The main thread may go on changing it meanwhile: it writes
/// other files, and waits for none of this.
void FilePreferencesStore::settle() {
    const std::lock_guard alone(settling_);
    std::unique_lock lock(mutex_);
    for (auto& [key, value] : values_) {
        const auto number = std::exchange(value.unsettled, std::nullopt);
        if (!number) {
            continue;
        }
        std::swap(value.bytes, settlingBytes_);
        lock.unlock();
        const std::string path = pathOf(key);
        const std::string beside = path + ".nouveau";
        const bool isSettled =
            writeSynced(beside, settlingBytes_) && std::rename(beside.c_str(), path.c_str()) == 0;
        if (!isSettled) {
            ::unlink(beside.c_str());
        }
        lock.lock();
        if (isSettled) {
            value.recent.forget(*number);
        } else if (!value.unsettled) {
            // A full disk may have room again: the next round tries once more. The settler may have
            // looked meanwhile and found nothing to do.
            value.unsettled = number;
            std::swap(value.bytes, settlingBytes_);
            changed_.notify_one();
        }
    }
    lock.unlock();
    syncFolder();
}

std::string FilePreferencesStore::pathOf(std::string_view name) const {
    return folder_ + "/" + std::string(name);
}

/// Makes renamings last through a power cut.
void FilePreferencesStore::syncFolder() const {
    const FileDescriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) {
        ::fsync(folder.value());
    }
}

}  // namespace tessivo
