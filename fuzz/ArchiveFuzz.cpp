#include "Fuzz.h"
#include "import/XLSXReader.h"
#include "import/ZipArchive.h"

#include <variant>

namespace {

constexpr std::uint64_t deflateLimit = 1032;  // RFC 1951: 258 bytes from no less than 2 bits

/// Extracts a member, but no more than `budget` bytes of it, and takes them off.
void checkMember(const tessivo::ZipEntry& entry, std::string_view archive, std::uint64_t& budget) {
    std::uint64_t size = 0;
    const bool extracted = tessivo::extract(entry, archive, [&](std::string_view piece) {
        require(!piece.empty());
        size += piece.size();
        return size < budget;
    });
    const bool stored = entry.compressionMethod == 0;
    require(stored ? size <= entry.compressedSize
                   : size <= std::uint64_t{entry.uncompressedSize} + 16);
    require(size <= std::uint64_t{entry.compressedSize} * deflateLimit);
    require(size == 0 || entry.compressedSize <= archive.size());
    require(!extracted || stored || size > 0);
    budget -= size < budget ? size : budget;
}

}  // namespace

/// Any bytes as an archive, and as a workbook.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view archive = asText(data, size);
    const auto entries = tessivo::parseCentralDirectory(archive);
    require(entries.size() * 46 <= size);
    std::uint64_t budget = std::uint64_t{4} * 1024 * 1024;
    for (const tessivo::ZipEntry& entry : entries) {
        checkMember(entry, archive, budget);
        if (budget == 0) {
            break;
        }
    }
    tessivo::WorkProgress progress;
    const auto result = tessivo::XLSXReader::read(archive, progress);
    const auto* error = std::get_if<tessivo::ReaderError>(&result);
    require(entries.empty() == (error && *error == tessivo::ReaderError::notAZip));
    return 0;
}
