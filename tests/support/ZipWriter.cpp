#include "support/ZipWriter.h"

#include <zlib.h>

#include <cstddef>
#include <stdexcept>

namespace tessivo::test {
namespace {

constexpr std::uint16_t dataDescriptorFlag = 1 << 3;

std::string le16(std::size_t value) {
    return littleEndian(value, 2);
}
std::string le32(std::uint64_t value) {
    return littleEndian(value, 4);
}

Bytef* asBytes(const char* text) {
    return const_cast<Bytef*>(reinterpret_cast<const Bytef*>(text));
}

std::uint32_t checksum(std::string_view bytes) {
    return static_cast<std::uint32_t>(
        crc32(0, asBytes(bytes.data()), static_cast<uInt>(bytes.size())));
}

}  // namespace

std::string littleEndian(std::uint64_t value, std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return bytes;
}

std::string deflated(std::string_view bytes) {
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) !=
        Z_OK) {
        throw std::runtime_error("no memory to deflate");
    }
    std::string output(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
    stream.next_in = asBytes(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = asBytes(output.data());
    stream.avail_out = static_cast<uInt>(output.size());
    const int status = deflate(&stream, Z_FINISH);
    output.resize(stream.total_out);
    deflateEnd(&stream);
    if (status != Z_STREAM_END) {
        throw std::runtime_error("deflate didn't finish");
    }
    return output;
}

std::string zipOf(const std::vector<ZipMember>& members, std::string_view comment) {
    std::string archive, directory;
    for (const ZipMember& member : members) {
        const std::string data = member.method == 8 ? deflated(member.content) : member.content;
        const std::string sizes =
            le32(checksum(member.content)) + le32(data.size()) + le32(member.content.size());
        const std::string start = le16(20) +
                                  le16(member.hasDataDescriptor ? dataDescriptorFlag : 0) +
                                  le16(member.method) + le32(0);
        const std::string directorySizes =
            sizes.substr(0, 8) +
            le32(member.content.size() + static_cast<std::uint64_t>(member.sizeClaimError));
        directory += "PK\x01\x02" + le16(20) + start + directorySizes + le16(member.name.size()) +
                     le16(member.directoryExtra.size()) + le16(member.comment.size()) + le32(0) +
                     le32(0) + le32(archive.size()) + member.name + member.directoryExtra +
                     member.comment;
        archive += "PK\x03\x04" + start +
                   (member.hasDataDescriptor ? std::string(12, '\0') : sizes) +
                   le16(member.name.size()) + le16(member.localExtra.size()) + member.name +
                   member.localExtra + data;
        if (member.hasDataDescriptor) {
            archive += "PK\x07\x08" + sizes;
        }
    }
    const std::string end = "PK\x05\x06" + le32(0) + le16(members.size()) + le16(members.size()) +
                            le32(directory.size()) + le32(archive.size()) + le16(comment.size());
    return archive + directory + end + std::string(comment);
}

}  // namespace tessivo::test
