#include "timecode/LtcSignal.h"

#include "ltc/LtcEncoder.h"
#include "platform/simulated/SimulatedMainQueue.h"

#include <ltc.h>

#include <algorithm>
#include <memory>

namespace tessivo {

namespace {

ltc::Timecode timecodeOf(const LtcBiphaseDecoder::Frame& frame) {
    return {static_cast<int>(frame.hours), static_cast<int>(frame.minutes),
            static_cast<int>(frame.seconds), static_cast<int>(frame.frames)};
}

}  // namespace

LtcSignal encodeLtc(std::string_view rateName, std::size_t frameCount, int sampleRate,
                    ltc::Timecode timecode) {
    const ltc::FrameRate rate = ltc::parseFrameRate(rateName).value();
    ltc::LtcEncoder encoder(rate, sampleRate);
    LtcSignal signal;
    for (std::size_t i = 0; i < frameCount; ++i, timecode = next(timecode, rate)) {
        signal.frames.push_back(
            {timecode.hours, timecode.minutes, timecode.seconds, timecode.frames});
        encoder.appendFrame(timecode, signal.samples);
    }
    encoder.appendClosingCell(signal.samples);
    return signal;
}

std::vector<FoundFrame> decodeWithLibltc(std::vector<float> samples, int samplesPerFrame) {
    const std::unique_ptr<LTCDecoder, decltype(&ltc_decoder_free)> decoder(
        ltc_decoder_create(samplesPerFrame, 32), ltc_decoder_free);
    std::vector<FoundFrame> found;
    constexpr std::size_t blockFrames = 512;
    for (std::size_t start = 0; start < samples.size(); start += blockFrames) {
        ltc_decoder_write_float(decoder.get(), samples.data() + start,
                                std::min(blockFrames, samples.size() - start),
                                static_cast<ltc_off_t>(start));
        LTCFrameExt received;
        while (ltc_decoder_read(decoder.get(), &received) != 0) {
            SMPTETimecode time;
            ltc_frame_to_time(&time, &received.ltc, 0);
            found.push_back({{time.hours, time.mins, time.secs, time.frame},
                             received.ltc.dfbit != 0,
                             static_cast<double>(received.off_end)});
        }
    }
    return found;
}

std::vector<LtcBiphaseDecoder::Frame> decodeAll(std::span<const float> samples) {
    const SimulatedMainQueue clock;
    LtcBiphaseDecoder decoder(clock);
    std::vector<LtcBiphaseDecoder::Frame> frames;
    decoder.feed(samples, [&](const auto& frame) { frames.push_back(frame); });
    return frames;
}

std::vector<float> signalOfBits(const std::string& bits) {
    constexpr std::size_t cell = 20;
    std::vector<float> samples(cell - 1, 0.5F);  // and the sample that has the edge
    float level = -0.5F;
    const auto hold = [&](std::size_t count) {
        samples.insert(samples.end(), count, level);
        level = -level;
    };
    for (const char bit : bits) {
        hold(bit == '0' ? cell : cell / 2);
        if (bit == '1') {
            hold(cell / 2);
        }
    }
    hold(1);
    return samples;
}

std::string bitsOfFrame(const LtcBiphaseDecoder::Frame& frame) {
    std::string bits = ltc::frameBits(timecodeOf(frame), {}).to_string();
    std::ranges::reverse(bits);
    return bits;
}

std::string text(std::span<const LtcBiphaseDecoder::Frame> frames) {
    std::string result;
    for (const LtcBiphaseDecoder::Frame& frame : frames) {
        result += ltc::toText(timecodeOf(frame)) + ' ';
    }
    return result;
}

}  // namespace tessivo
