#include "Fuzz.h"
#include "platform/simulated/SimulatedMainQueue.h"
#include "timecode/LtcBiphaseDecoder.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

namespace {

using Frame = tessivo::LtcBiphaseDecoder::Frame;

/// Any sample values at all.
std::vector<float> asSamples(std::span<const std::uint8_t> bytes) {
    std::vector<float> samples;
    for (; bytes.size() >= sizeof(float); bytes = bytes.subspan(sizeof(float))) {
        std::memcpy(&samples.emplace_back(), bytes.data(), sizeof(float));
    }
    return samples;
}

/// One byte per distance between edges, which is how the input comes to whole frames.
std::vector<float> asIntervals(std::span<const std::uint8_t> bytes) {
    std::vector<float> samples;
    float level = 1.0F;
    for (const std::uint8_t interval : bytes) {
        samples.insert(samples.end(), interval, level);
        level = -level;
    }
    return samples;
}

void checkRanges(const Frame& frame) {
    require(frame.hours >= 0 && frame.hours <= 23);
    require(frame.minutes >= 0 && frame.minutes <= 59);
    require(frame.seconds >= 0 && frame.seconds <= 59);
    require(frame.frames >= 0 && frame.frames <= 29);
    require(frame.fps == 25);
}

}  // namespace

/// First byte: the kind of input and the length of the pieces; the rest: the input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || size > 4096) {
        return 0;
    }
    const std::span<const std::uint8_t> bytes(data + 1, size - 1);
    const std::vector<float> samples = data[0] % 2 == 0 ? asIntervals(bytes) : asSamples(bytes);
    const std::size_t pieceLength = data[0] / 2 + 1U;

    const tessivo::SimulatedMainQueue clock;
    tessivo::LtcBiphaseDecoder single(clock), pieces(clock);
    std::vector<Frame> expected, found;
    for (std::size_t start = 0; start < samples.size(); start += pieceLength) {
        const std::size_t count = std::min(pieceLength, samples.size() - start);
        const std::span<const float> piece = std::span(samples).subspan(start, count);
        for (const float sample : piece) {
            if (const std::optional<Frame> frame = single.feedSample(sample)) {
                checkRanges(*frame);
                expected.push_back(*frame);
            }
        }
        pieces.feed(piece, [&](const Frame& frame) { found.push_back(frame); });
        require(found == expected);
    }
    return 0;
}
