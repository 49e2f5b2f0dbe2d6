#include "platform/posix/ValueVersion.h"

#include "platform/posix/RegularFile.h"

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <utility>

namespace tessivo {
namespace {

constexpr std::string_view mark = ".recent-";
constexpr std::size_t numberDigits = 16;
constexpr std::size_t endingLength = mark.size() + numberDigits + 1 + 8;

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

/// What the name of a version has after that of its value.
std::string endingOf(std::uint64_t number, std::string_view bytes) {
    const auto checksum =
        ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());  // as zlib asks
    std::array<char, endingLength + 1> text{};
    std::snprintf(text.data(), text.size(), "%s%016" PRIx64 "-%08lx", mark.data(), number,
                  checksum);
    return text.data();
}

}  // namespace

// Replacing a file's bytes, or renaming over an unsynced file, would make some file systems write
// to the disk at once.
std::optional<ValueVersion> writeVersion(const std::string& valuePath, std::uint64_t number,
                                         std::string_view bytes) {
    std::string path = valuePath + endingOf(number, bytes);
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, ownerOnly));
    if (!file.isOpen() || !writeAll(file.value(), bytes)) {
        ::unlink(path.c_str());
        return std::nullopt;
    }
    return ValueVersion{std::move(path), std::move(file)};
}

std::vector<std::string> versionsOf(const std::string& valuePath) {
    const std::filesystem::path value(valuePath);
    const std::string start = value.filename().string().append(mark);
    std::vector<std::string> paths;
    std::error_code error;
    std::filesystem::directory_iterator entry(value.parent_path(), error);
    for (; !error && entry != end(entry); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(start) && name.size() == start.size() - mark.size() + endingLength) {
            paths.push_back((value.parent_path() / name).string());
        }
    }
    std::ranges::sort(paths, std::greater());
    return paths;
}

std::uint64_t numberOfVersion(const std::string& path) {
    std::uint64_t number = 0;
    const char* digits = path.data() + path.size() - endingLength + mark.size();
    std::from_chars(digits, digits + numberDigits, number, 16);
    return number;
}

std::optional<std::string> readVersion(const std::string& path) {
    std::string bytes;
    if (readRegularFile(path, SIZE_MAX, bytes) != FileReading::Done ||
        !path.ends_with(endingOf(numberOfVersion(path), bytes))) {
        return std::nullopt;
    }
    return bytes;
}

}  // namespace tessivo
