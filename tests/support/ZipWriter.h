#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo::test {

/// The bytes as a raw DEFLATE stream.
std::string deflated(std::string_view bytes);

/// One member to be written. What the directory claims can differ from what is stored.
struct ZipMember {
    std::string name;
    std::string content = {};
    std::uint16_t method = 8;
    bool hasDataDescriptor =
        false;                    ///< sizes are then 0 in the local header, as streaming writers do
    std::string localExtra = {};  ///< the local header may have another extra field
    std::string directoryExtra = {};
    std::string comment = {};
    std::int64_t sizeClaimError = 0;  ///< added to the directory's uncompressed size
};

/// An archive of the members in this order, with what a careful writer puts around them.
std::string zipOf(const std::vector<ZipMember>& members, std::string_view comment = {});

/// The bytes of a little-endian number.
std::string littleEndian(std::uint64_t value, std::size_t size);

}  // namespace tessivo::test
