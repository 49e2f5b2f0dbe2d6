#include "platform/posix/RegularFile.h"

#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace tessivo {
namespace {

/// Appends all that is left in `file`; false on an error or past the maximum.
bool readToEnd(int file, std::size_t maximumBytes, std::string& bytes) {
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = ::read(file, block.data(), block.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return count == 0;
        }
        if (static_cast<std::size_t>(count) > maximumBytes - bytes.size()) {
            return false;
        }
        bytes.append(block.data(), static_cast<std::size_t>(count));
    }
}

}  // namespace

FileReading readRegularFile(const std::string& path, std::size_t maximumBytes, std::string& bytes) {
    bytes.clear();
    // Without O_NONBLOCK, opening a pipe waits for its other end.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen()) {
        return errno == ENOENT ? FileReading::Absent : FileReading::Failed;
    }
    struct stat status {};
    if (::fstat(file.value(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return FileReading::Failed;
    }
    bytes.reserve(std::min(static_cast<std::size_t>(status.st_size), maximumBytes));
    return readToEnd(file.value(), maximumBytes, bytes) ? FileReading::Done : FileReading::Failed;
}

}  // namespace tessivo
