#include "platform/qt/FilePreferencesStore.h"

#include <QtCore/QStandardPaths>

#include "platform/qt/RegularFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <utility>

namespace tessivo {
namespace {

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

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

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Gives the file these bytes, over those that it has, and waits until they are on the disk.
bool writeSynced(const std::string& path, std::string_view bytes) {
    const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, ownerOnly));
    return file.isOpen() && writeAll(file.value(), bytes) &&
           ::ftruncate(file.value(), static_cast<off_t>(bytes.size())) == 0 &&
           ::fdatasync(file.value()) == 0;
}

bool isRegularFile(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Puts a file in the place of another, and the other in its, where there is one and the file
/// system can do that in one step; else the other is gone.
bool exchange(const std::string& from, const std::string& to) {
    return (isRegularFile(to) &&
            ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_EXCHANGE) == 0) ||
           std::rename(from.c_str(), to.c_str()) == 0;
}

}  // namespace

FilePreferencesStore::FilePreferencesStore(std::string folder) : folder_(std::move(folder)) {
    makeFolder(folder_);
    lock_ = lockFile(pathOf("lock"));
}

std::string FilePreferencesStore::defaultFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() +
           "/tessivo";
}

std::optional<std::string> FilePreferencesStore::data(std::string_view key) {
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
    // Overwriting the value before the present one needs that no power cut can bring it back as the
    // present one: the folder is synced each time.
    const std::string path = pathOf(key);
    const std::string previous = path + ".precedent";
    if (!writeSynced(previous, bytes) || !exchange(previous, path)) {
        ::unlink(previous.c_str());
        return;
    }
    syncFolder();
}

bool FilePreferencesStore::setAside(std::string_view key) {
    if (!isWritable()) {
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
