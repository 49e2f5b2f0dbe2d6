#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

/// One member of a ZIP archive as its central directory describes it (PKWARE's application note,
/// section 4.3.12). What the directory says is a claim: nothing is allocated on its word.
struct ZipEntry {
    std::string name;                     ///< as stored; empty when that isn't UTF-8
    std::uint16_t compressionMethod = 0;  ///< 0 stored, 8 deflated; no other can be extracted
    std::uint32_t compressedSize = 0;     ///< bytes of data after the local header
    std::uint32_t localHeaderOffset = 0;  ///< from the first byte of the archive
    std::uint32_t uncompressedSize = 0;
};

/// The members of the archive in the directory's order; none when it can't be understood. Reads
/// neither ZIP64 nor encrypted nor split archives. A directory that is cut short gives the members
/// before the cut.
std::vector<ZipEntry> parseCentralDirectory(std::string_view archive);

/// The bytes of a member as they are stored; none when they would run past the archive's end.
std::optional<std::string_view> storedBytes(const ZipEntry& entry, std::string_view archive);

/// Takes the next bytes of a member; false to be given no more.
using PieceReceiver = std::function<bool(std::string_view piece)>;

/// Hands over the uncompressed bytes of a member piece by piece, up to 16 bytes more than its
/// claimed uncompressed size when it is deflated. Checksums aren't compared. False when the member
/// can't be extracted, and then the pieces received must be forgotten; true also when the receiver
/// ended it.
bool extract(const ZipEntry& entry, std::string_view archive, const PieceReceiver& receive);

}  // namespace tessivo
