#include "platform/simulated/SimulatedMainQueue.h"
#include "timecode/CarefulDecoder.h"
#include "timecode/LtcBiphaseDecoder.h"
#include "timecode/LtcSignal.h"

#include <ltc.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <set>
#include <string>
#include <vector>

using tessivo::LtcBiphaseDecoder;
using tessivo::Random;
using Frame = LtcBiphaseDecoder::Frame;

namespace {

constexpr int sampleRate = 48'000;
constexpr int samplesPerFrame = sampleRate / 25;

/// Three columns of the table. A frame is right when it says what was sent where it was found,
/// once.
std::string judge(const std::vector<Frame>& sent, const std::vector<tessivo::FoundFrame>& found) {
    std::set<long> right;
    for (const auto& [frame, dropFrame, end] : found) {
        const long number = std::lround(end / samplesPerFrame) - 1;
        if (number >= 0 && number < std::ssize(sent) &&
            sent[static_cast<std::size_t>(number)] == frame) {
            right.insert(number);
        }
    }
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%5zu %5zu %6zu", right.size(),
                  found.size() - right.size(), sent.size() - right.size());
    return text.data();
}

std::vector<tessivo::FoundFrame> decode(const std::vector<float>& samples) {
    const tessivo::SimulatedMainQueue clock;
    LtcBiphaseDecoder decoder(clock);
    std::vector<tessivo::FoundFrame> found;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (const auto frame = decoder.feedSample(samples[i])) {
            found.push_back({*frame, false, static_cast<double>(i)});
        }
    }
    return found;
}

std::vector<tessivo::FoundFrame> decodeCarefully(const std::vector<float>& samples) {
    const tessivo::SimulatedMainQueue clock;
    tessivo::CarefulDecoder decoder(clock);
    std::vector<tessivo::FoundFrame> found;
    decoder.feed(samples, sampleRate, [&](const tessivo::HeardFrame& heard) {
        found.push_back({heard.frame, false, heard.end * sampleRate});
    });
    return found;
}

/// The timecode's peak: low enough that no sum of it and a disturbance leaves the range of ±1,
/// which libltc's conversion to its 8 bits doesn't bound.
constexpr float peak = 0.25F;

/// A minute of timecode at `peak`, and what is done to it; levels are relative to the timecode's.
struct Row {
    const char* name;
    float gain = 1.0F;
    bool isSlow = false;      ///< edges as behind a low-pass of 4 kHz, 12 dB per octave
    double hum = 0.0;         ///< the peak of a sine of 50 Hz
    float offset = 0.0F;      ///< a constant
    std::size_t silence = 0;  ///< milliseconds of each second in which nothing arrives
    float noise = 0.0F;       ///< the effective value of white noise
};

const Row rows[] = {
    {.name = "none"},
    {.name = "level -40 dBFS", .gain = 0.04F},
    {.name = "level -60 dBFS", .gain = 0.004F},
    {.name = "noise, SNR 20 dB", .noise = 0.1F},
    {.name = "noise, SNR 16 dB", .noise = 0.158489319F},
    {.name = "noise, SNR 14 dB", .noise = 0.199526231F},
    {.name = "noise, SNR 13 dB", .noise = 0.223872114F},
    {.name = "noise, SNR 12 dB", .noise = 0.251188643F},
    {.name = "noise, SNR 11 dB", .noise = 0.281838293F},
    {.name = "noise, SNR 10 dB", .noise = 0.316227766F},
    {.name = "noise, SNR 8 dB", .noise = 0.398107171F},
    {.name = "50 Hz hum, half the peak", .hum = 0.5},
    {.name = "50 Hz hum, 0.9 of the peak", .hum = 0.9},
    {.name = "50 Hz hum, 1.1 of the peak", .hum = 1.1},
    {.name = "offset, half the peak", .offset = 0.5F},
    {.name = "offset, 0.9 of the peak", .offset = 0.9F},
    {.name = "offset, 1.1 of the peak", .offset = 1.1F},
    {.name = "slow edges", .isSlow = true},
    {.name = "slow edges, hum 0.5", .isSlow = true, .hum = 0.5},
    {.name = "slow edges, hum 0.7", .isSlow = true, .hum = 0.7},
    {.name = "slow edges, hum 0.9", .isSlow = true, .hum = 0.9},
    {.name = "slow edges, offset 0.5", .isSlow = true, .offset = 0.5F},
    {.name = "slow edges, offset 0.7", .isSlow = true, .offset = 0.7F},
    {.name = "slow edges, offset 0.9", .isSlow = true, .offset = 0.9F},
    {.name = "hum 0.5 and noise 20 dB", .hum = 0.5, .noise = 0.1F},
    {.name = "1 ms lost each second", .silence = 1},
    {.name = "10 ms lost each second", .silence = 10},
    {.name = "100 ms lost each second", .silence = 100},
    {.name = "500 ms lost each second", .silence = 500},
    {.name = "100 ms lost, noise 40 dB", .silence = 100, .noise = 0.01F},
    {.name = "500 ms lost, noise 40 dB", .silence = 500, .noise = 0.01F},
};

/// All arithmetic is exact enough to be the same on every computer.
std::vector<float> disturbed(std::vector<float> samples, const Row& row) {
    // A rotation by 2π·50/48000 per sample, begun anew each period of 960 samples.
    constexpr double cosine = 0.99997858166412923, sine = 0.0065449379673518581;
    double x = 1.0, y = 0.0;
    Random random(2);
    // Twice a low-pass of the first order: what passes of each step, 1 - e^(-2π·4000/48000).
    constexpr double passing = 0.40762847;
    double once = 0.0, twice = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (i % 960 == 0) {
            x = 1.0;
            y = 0.0;
        }
        float& sample = samples[i];
        if (row.isSlow) {
            once += passing * (sample - once);
            twice += passing * (once - twice);
            sample = static_cast<float>(twice);
        }
        sample =
            sample * peak * row.gain + static_cast<float>(peak * row.hum * y) + peak * row.offset;
        // Off the beginning of a frame, and drifting over it from second to second.
        if ((i + i / sampleRate * 37) % sampleRate / 48 < row.silence) {
            sample = 0.0F;
        }
        sample += peak * row.noise * random.gaussian();
        const double turned = x * cosine - y * sine;
        y = x * sine + y * cosine;
        x = turned;
    }
    return samples;
}

}  // namespace

/// Prints the table of docs/timecode.md.
int main() {
    const tessivo::LtcSignal signal = tessivo::encodeLtc("25", 1500, sampleRate, {9, 59, 30, 0});
    std::printf(
        "1500 frames sent                  Tessivo              carefully           libltc %s\n"
        "disturbance                  right wrong missed   right wrong missed   right wrong "
        "missed\n",
        LIBLTC_VERSION);
    for (const Row& row : rows) {
        const std::vector<float> samples = disturbed(signal.samples, row);
        const auto libltc = tessivo::decodeWithLibltc(samples, samplesPerFrame);
        std::printf("%-28s %s   %s   %s\n", row.name, judge(signal.frames, decode(samples)).c_str(),
                    judge(signal.frames, decodeCarefully(samples)).c_str(),
                    judge(signal.frames, libltc).c_str());
    }
}
