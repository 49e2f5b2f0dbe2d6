#include "platform/posix/RecentValue.h"

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/RegularFile.h"

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <array>
#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <utility>

namespace tessivo {
namespace {

constexpr std::size_t numberDigits = 16;
constexpr std::size_t headerLength = numberDigits + 1 + 16 + 1 + 8 + 1;

/// What stands before a version: its number, its length and its CRC-32, in hexadecimal.
std::string headerOf(std::uint64_t number, std::string_view bytes) {
    const auto checksum =
        ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());  // as zlib asks
    std::array<char, headerLength + 1> text{};
    std::snprintf(text.data(), text.size(), "%016" PRIx64 " %016zx %08lx\n", number, bytes.size(),
                  checksum);
    return text.data();
}

std::optional<RecentValue::Version> readWhole(const std::string& path) {
    std::string file;
    if (readRegularFile(path, SIZE_MAX, file) != FileReading::Done || file.size() < headerLength) {
        return std::nullopt;
    }
    RecentValue::Version version;
    std::from_chars(file.data(), file.data() + numberDigits, version.number, 16);
    const std::string header = file.substr(0, headerLength);
    file.erase(0, headerLength);
    if (header != headerOf(version.number, file)) {
        return std::nullopt;
    }
    version.bytes = std::move(file);
    return version;
}

}  // namespace

RecentValue::RecentValue(std::string path) : path_(std::move(path)) {
    if (const auto version = read()) {
        newest_ = version->number;
    }
}

std::optional<RecentValue::Version> RecentValue::read() const {
    auto even = readWhole(pathOf(0));
    auto odd = readWhole(pathOf(1));
    return even && (!odd || even->number > odd->number) ? std::move(even) : std::move(odd);
}

std::optional<std::uint64_t> RecentValue::write(std::string_view bytes) {
    const std::uint64_t number = newest_ + 1;
    const std::string path = pathOf(number);
    // A new file, not new bytes for the one of two versions ago: those might be what a power cut
    // brings back, whole, long after newer versions have been synced.
    ::unlink(path.c_str());
    const FileDescriptor file(openToWrite(path));
    if (!file.isOpen() || !writeAll(file.value(), headerOf(number, bytes)) ||
        !writeAll(file.value(), bytes)) {
        ::unlink(path.c_str());
        return std::nullopt;
    }
    newest_ = number;
    return number;
}

void RecentValue::forget(std::uint64_t number) {
    // The older one first: alone, it would be taken for the newest.
    if (newest_ == number) {
        ::unlink(pathOf(number + 1).c_str());
    }
    if (newest_ <= number + 1) {
        ::unlink(pathOf(number).c_str());
    }
}

std::string RecentValue::pathOf(std::uint64_t number) const {
    return path_ + ".recent-" + std::to_string(number % 2);
}

}  // namespace tessivo
