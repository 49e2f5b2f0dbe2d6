#include "import/ZipArchive.h"

#include <simdjson.h>
#include <zlib.h>

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <memory>
#include <optional>

namespace tessivo {
namespace {

constexpr std::string_view endOfDirectorySignature = "PK\x05\x06";
constexpr std::size_t endOfDirectorySize = 22;
constexpr std::size_t directoryRecordSize = 46;
constexpr std::size_t localHeaderSize = 30;
constexpr std::uint64_t sizeTolerance = 16;  // beyond the claimed uncompressed size
/// Large enough to make the pieces few, small enough to stay in the processor's cache.
constexpr std::size_t pieceSize = std::size_t{1} << 18U;

/// A little-endian number of `size` bytes, all of which must lie in `bytes`.
std::uint32_t readNumber(std::string_view bytes, std::size_t offset, std::size_t size) {
    assert(offset + size <= bytes.size());
    std::uint32_t value = 0;
    for (std::size_t i = size; i-- > 0;) {
        value = value << 8 | static_cast<std::uint8_t>(bytes[offset + i]);
    }
    return value;
}

std::uint16_t read16(std::string_view bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(readNumber(bytes, offset, 2));
}

std::uint32_t read32(std::string_view bytes, std::size_t offset) {
    return readNumber(bytes, offset, 4);
}

bool handOver(std::string_view data, const PieceReceiver& receive) {
    while (!data.empty() && receive(data.substr(0, pieceSize))) {
        data.remove_prefix(std::min(pieceSize, data.size()));
    }
    return true;
}

/// A raw DEFLATE stream (RFC 1951) being decoded; `data` must outlive it.
class Inflater {
public:
    explicit Inflater(std::string_view data) {
        // zlib takes its input as non-const for compatibility only; it doesn't write to it.
        stream_.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(data.data()));
        stream_.avail_in = static_cast<uInt>(data.size());
        ready_ = inflateInit2(&stream_, -MAX_WBITS) == Z_OK;
    }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    ~Inflater() { inflateEnd(&stream_); }

    /// Decodes until `size` bytes stand at `output` or the stream has ended, and says how many
    /// there are; none when the stream is faulty or stops before its end.
    std::optional<std::size_t> decode(char* output, std::size_t size) {
        if (!ready_) {
            return std::nullopt;
        }
        stream_.next_out = reinterpret_cast<Bytef*>(output);
        stream_.avail_out = static_cast<uInt>(size);
        while (stream_.avail_out > 0 && !ended_) {
            const int status = inflate(&stream_, Z_NO_FLUSH);
            ended_ = status == Z_STREAM_END;
            if (!ended_ && status != Z_OK) {
                return std::nullopt;
            }
        }
        return size - stream_.avail_out;
    }
    bool ended() const { return ended_; }

private:
    z_stream stream_{};
    bool ready_ = false;
    bool ended_ = false;
};

bool inflateMember(std::string_view data, std::uint64_t capacity, const PieceReceiver& receive) {
    Inflater inflater(data);
    const auto buffer = std::make_unique_for_overwrite<char[]>(pieceSize);
    bool hasOutput = false;
    for (std::uint64_t left = capacity; left > 0 && !inflater.ended();) {
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(left, pieceSize));
        const std::optional<std::size_t> produced = inflater.decode(buffer.get(), size);
        if (!produced) {
            return false;
        }
        hasOutput = hasOutput || *produced > 0;
        assert(*produced <= size);
        left -= *produced;
        if (*produced > 0 && !receive({buffer.get(), *produced})) {
            break;
        }
    }
    return hasOutput;
}

}  // namespace

std::vector<ZipEntry> parseCentralDirectory(std::string_view archive) {
    std::vector<ZipEntry> entries;
    if (archive.size() < endOfDirectorySize) {
        return entries;
    }
    // An archive's comment may be longer than the format allows, so the search has no limit.
    const std::size_t end =
        archive.rfind(endOfDirectorySignature, archive.size() - endOfDirectorySize);
    if (end == std::string_view::npos) {
        return entries;
    }
    const std::size_t count = read16(archive, end + 10);
    std::size_t record = read32(archive, end + 16);
    while (entries.size() < count && archive.size() >= record + directoryRecordSize) {
        const std::size_t nameLength = read16(archive, record + 28);
        const std::size_t nameStart = record + directoryRecordSize;
        if (archive.size() < nameStart + nameLength) {
            break;
        }
        const std::string_view name = archive.substr(nameStart, nameLength);
        entries.push_back({
            .name = std::string(simdjson::validate_utf8(name) ? name : std::string_view()),
            .compressionMethod = read16(archive, record + 10),
            .compressedSize = read32(archive, record + 20),
            .localHeaderOffset = read32(archive, record + 42),
            .uncompressedSize = read32(archive, record + 24),
        });
        record =
            nameStart + nameLength + read16(archive, record + 30) + read16(archive, record + 32);
    }
    return entries;
}

std::optional<std::string_view> storedBytes(const ZipEntry& entry, std::string_view archive) {
    const std::size_t header = entry.localHeaderOffset;
    if (archive.size() < header + localHeaderSize) {
        return std::nullopt;
    }
    const std::size_t nameLength = read16(archive, header + 26);
    const std::size_t extraLength = read16(archive, header + 28);
    const std::size_t start = header + localHeaderSize + nameLength + extraLength;
    if (archive.size() < start + entry.compressedSize) {
        return std::nullopt;
    }
    return archive.substr(start, entry.compressedSize);
}

bool extract(const ZipEntry& entry, std::string_view archive, const PieceReceiver& receive) {
    const std::optional<std::string_view> data = storedBytes(entry, archive);
    if (!data) {
        return false;
    }
    switch (entry.compressionMethod) {
        case 0:
            return handOver(*data, receive);
        case 8:
            return inflateMember(*data, entry.uncompressedSize + sizeTolerance, receive);
        default:
            return false;
    }
}

}  // namespace tessivo
