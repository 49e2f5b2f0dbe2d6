#include "ltc/WavWriter.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace tessivo::ltc {

namespace {

constexpr std::uint32_t bytesPerSample = 2;

// Little-endian, as RIFF wants it.
template <typename Integer>
void appendInteger(std::string& bytes, Integer value) {
    for (std::size_t shift = 0; shift < 8 * sizeof(Integer); shift += 8) {
        bytes.push_back(static_cast<char>(value >> shift & 0xFF));
    }
}

std::string header(std::uint32_t sampleRate, std::uint32_t dataSize) {
    std::string bytes = "RIFF";
    appendInteger(bytes, 36 + dataSize);
    bytes += "WAVEfmt ";
    appendInteger(bytes, std::uint32_t{16});            // size of the format chunk
    appendInteger(bytes, std::uint16_t{1});             // linear PCM
    appendInteger(bytes, std::uint16_t{1});             // channels
    appendInteger(bytes, sampleRate);                   // samples per second
    appendInteger(bytes, sampleRate * bytesPerSample);  // bytes per second
    appendInteger(bytes, std::uint16_t{bytesPerSample});
    appendInteger(bytes, std::uint16_t{8 * bytesPerSample});
    bytes += "data";
    appendInteger(bytes, dataSize);
    return bytes;
}

}  // namespace

WavWriter::WavWriter(const std::string& path, int sampleRate, std::int64_t sampleCount)
    : file_(path, std::ios::binary | std::ios::trunc) {
    file_ << header(static_cast<std::uint32_t>(sampleRate),
                    static_cast<std::uint32_t>(sampleCount) * bytesPerSample);
}

bool WavWriter::append(std::span<const float> samples) {
    std::string bytes;
    bytes.reserve(samples.size() * bytesPerSample);
    for (const float sample : samples) {
        const float clipped = std::clamp(sample, -1.0F, 1.0F);
        appendInteger(bytes, static_cast<std::int16_t>(std::lround(clipped * 32'767.0F)));
    }
    file_ << bytes;
    return file_.good();
}

bool WavWriter::finish() {
    file_.close();
    return !file_.fail();
}

}  // namespace tessivo::ltc
