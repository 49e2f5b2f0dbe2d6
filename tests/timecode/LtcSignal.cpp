#include "timecode/LtcSignal.h"

#include "platform/simulated/SimulatedMainQueue.h"

#include <ltc.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>

namespace tessivo {

namespace {

using Encoder = std::unique_ptr<LTCEncoder, decltype(&ltc_encoder_free)>;

Encoder makeEncoder(const LtcSignalRequest& request) {
    const bool is25 = request.framesPerSecond == 25.0;
    const bool is24 = request.framesPerSecond == 24.0;
    const LTC_TV_STANDARD standard = is25 ? LTC_TV_625_50 : is24 ? LTC_TV_FILM_24 : LTC_TV_525_60;
    Encoder encoder(ltc_encoder_create(request.sampleRate, request.framesPerSecond, standard, 0),
                    ltc_encoder_free);
    // The default leaves room for slower than normal only down to 22 frames per second.
    ltc_encoder_set_buffersize(encoder.get(), request.sampleRate, 10.0);
    LTCFrame frame;
    ltc_frame_reset(&frame);
    SMPTETimecode timecode{};
    timecode.hours = static_cast<unsigned char>(request.start.hours);
    timecode.mins = static_cast<unsigned char>(request.start.minutes);
    timecode.secs = static_cast<unsigned char>(request.start.seconds);
    timecode.frame = static_cast<unsigned char>(request.start.frames);
    ltc_time_to_frame(&frame, &timecode, standard, 0);
    frame.dfbit = request.dropFrame ? 1 : 0;
    ltc_encoder_set_frame(encoder.get(), &frame);
    return encoder;
}

LtcBiphaseDecoder::Frame presentFrame(LTCEncoder* encoder) {
    SMPTETimecode timecode;
    ltc_encoder_get_timecode(encoder, &timecode);
    return {timecode.hours, timecode.mins, timecode.secs, timecode.frame, 25};
}

void appendEncoded(LTCEncoder* encoder, const LtcSignalRequest& request,
                   std::vector<float>& samples) {
    for (int byte = 0; byte < 10; ++byte) {
        ltc_encoder_encode_byte(encoder, byte, request.speed);
    }
    ltcsnd_sample_t* data = nullptr;
    const int count = ltc_encoder_get_bufferptr(encoder, &data, 1);
    for (int i = 0; i < count; ++i) {
        samples.push_back((static_cast<float>(data[i]) - 128.0F) / 128.0F * request.gain);
    }
}

void setField(std::string& bits, std::int64_t units, std::size_t unitsAt, std::int64_t tens,
              std::size_t tensAt) {
    for (std::size_t bit = 0; bit < 4; ++bit) {
        bits[unitsAt + bit] = (units >> bit & 1) != 0 ? '1' : '0';
        if ((tens >> bit & 1) != 0) {
            bits[tensAt + bit] = '1';
        }
    }
}

}  // namespace

LtcSignal encodeWithLibltc(const LtcSignalRequest& request) {
    const Encoder encoder = makeEncoder(request);
    LtcSignal signal;
    for (int i = 0; i < request.frameCount; ++i) {
        signal.frames.push_back(presentFrame(encoder.get()));
        appendEncoded(encoder.get(), request, signal.samples);
        ltc_encoder_inc_timecode(encoder.get());
    }
    appendEncoded(encoder.get(), request, signal.samples);
    return signal;
}

std::vector<LibltcFrame> decodeWithLibltc(std::vector<float> samples, int samplesPerFrame) {
    const std::unique_ptr<LTCDecoder, decltype(&ltc_decoder_free)> decoder(
        ltc_decoder_create(samplesPerFrame, 32), ltc_decoder_free);
    std::vector<LibltcFrame> found;
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

void appendIntervals(std::vector<float>& samples, std::span<const int> intervals) {
    float level = samples.empty() || samples.back() < 0.0F ? 0.5F : -0.5F;
    for (const int interval : intervals) {
        samples.insert(samples.end(), static_cast<std::size_t>(interval), level);
        level = -level;
    }
}

std::vector<int> intervalsOfBits(const std::string& bits, int cell) {
    std::vector<int> intervals;
    for (const char bit : bits) {
        if (bit == '0') {
            intervals.push_back(cell);
        } else {
            intervals.insert(intervals.end(), 2, cell / 2);
        }
    }
    return intervals;
}

std::string bitsOfFrame(const LtcBiphaseDecoder::Frame& frame) {
    std::string bits = std::string(64, '0') + "0011111111111101";
    setField(bits, frame.frames % 10, 0, frame.frames / 10, 8);
    setField(bits, frame.seconds % 10, 16, frame.seconds / 10, 24);
    setField(bits, frame.minutes % 10, 32, frame.minutes / 10, 40);
    setField(bits, frame.hours % 10, 48, frame.hours / 10, 56);
    return bits;
}

std::string text(const LtcBiphaseDecoder::Frame& frame) {
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d:%02d", static_cast<int>(frame.hours),
                  static_cast<int>(frame.minutes), static_cast<int>(frame.seconds),
                  static_cast<int>(frame.frames));
    return text.data();
}

std::string text(std::span<const LtcBiphaseDecoder::Frame> frames) {
    std::string result;
    for (const LtcBiphaseDecoder::Frame& frame : frames) {
        result += text(frame) + ' ';
    }
    return result;
}

}  // namespace tessivo
