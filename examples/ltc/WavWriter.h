#pragma once

#include <cstdint>
#include <fstream>
#include <span>
#include <string>

namespace tessivo::ltc {

/// Writes a mono .wav file of 16-bit PCM: the one form that every player, sound card and audio
/// workstation takes without conversion, and fine enough for timecode at -60 dBFS (33 steps).
class WavWriter {
public:
    /// The most samples that the format's 32-bit sizes allow.
    static constexpr std::int64_t maximumSampleCount = (0xFFFF'FFFFLL - 36) / 2;

    /// Replaces the file at `path`. `sampleCount` is how many samples will be appended, at most
    /// `maximumSampleCount`; the header comes first and names it.
    WavWriter(const std::string& path, int sampleRate, std::int64_t sampleCount);

    /// Samples from -1 to 1; what lies outside is clipped. False when writing has failed, now or
    /// before.
    bool append(std::span<const float> samples);

    /// Closes the file; false when anything could not be written.
    bool finish();

private:
    std::ofstream file_;
};

}  // namespace tessivo::ltc
