#include "platform/simulated/SimulatedMainQueue.h"
#include "timecode/AudioLevel.h"
#include "timecode/LtcBiphaseDecoder.h"

#include <benchmark/benchmark.h>
#include <ltc.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace {

using Seconds = std::chrono::duration<double>;

constexpr double sampleRate = 48'000.0;
constexpr std::size_t blockFrames = 512;

template <typename Work>
double secondsOf(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return Seconds(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + std::ssize(values) / 2);
    return values[values.size() / 2];
}

/// Ten minutes of 25 fps timecode from libltc's encoder, in its own 8-bit samples.
std::vector<ltcsnd_sample_t> encodeTenMinutes() {
    LTCEncoder* encoder = ltc_encoder_create(sampleRate, 25.0, LTC_TV_625_50, 0);
    std::vector<ltcsnd_sample_t> samples;
    for (int frame = 0; frame < 10 * 60 * 25; ++frame) {
        ltc_encoder_encode_frame(encoder);
        ltcsnd_sample_t* data = nullptr;
        const int count = ltc_encoder_get_bufferptr(encoder, &data, 1);
        samples.insert(samples.end(), data, data + count);
        ltc_encoder_inc_timecode(encoder);
    }
    ltc_encoder_free(encoder);
    return samples;
}

std::vector<float> toFloat(const std::vector<ltcsnd_sample_t>& samples) {
    std::vector<float> result(samples.size());
    std::ranges::transform(samples, result.begin(), [](ltcsnd_sample_t sample) {
        return (static_cast<float>(sample) - 128.0F) / 128.0F;
    });
    return result;
}

std::int64_t decode(std::span<const float> samples) {
    const tessivo::SimulatedMainQueue clock;
    tessivo::LtcBiphaseDecoder decoder(clock);
    std::int64_t frames = 0;
    for (std::size_t start = 0; start < samples.size(); start += blockFrames) {
        decoder.feed(samples.subspan(start, std::min(blockFrames, samples.size() - start)),
                     [&](const tessivo::LtcBiphaseDecoder::Frame&) { ++frames; });
    }
    return frames;
}

std::int64_t decodeSampleBySample(std::span<const float> samples) {
    const tessivo::SimulatedMainQueue clock;
    tessivo::LtcBiphaseDecoder decoder(clock);
    std::int64_t frames = 0;
    for (const float sample : samples) {
        frames += decoder.feedSample(sample) ? 1 : 0;
    }
    return frames;
}

/// `write` is the function of libltc that takes this kind of sample.
template <typename Sample, typename Write>
std::int64_t decodeWithLibltc(std::span<Sample> samples, Write write) {
    LTCDecoder* decoder = ltc_decoder_create(static_cast<int>(sampleRate / 25.0), 32);
    LTCFrameExt frame;
    std::int64_t frames = 0;
    for (std::size_t start = 0; start < samples.size(); start += blockFrames) {
        write(decoder, samples.data() + start, std::min(blockFrames, samples.size() - start),
              static_cast<ltc_off_t>(start));
        while (ltc_decoder_read(decoder, &frame) != 0) {
            ++frames;
        }
    }
    ltc_decoder_free(decoder);
    return frames;
}

/// Budget: `times_libltc` at least 5, and no more than 2 frames missed.
void decodeTenMinutes(benchmark::State& state) {
    std::vector<ltcsnd_sample_t> bytes = encodeTenMinutes();
    std::vector<float> samples = toFloat(bytes);
    std::vector<double> ratios, byteRatios, singleRatios, ours, theirs;
    std::int64_t ourFrames = 0, theirFrames = 0;
    for (auto _ : state) {
        const double own = secondsOf([&] { ourFrames = decode(samples); });
        const double single = secondsOf([&] { ourFrames = decodeSampleBySample(samples); });
        const double libltc = secondsOf(
            [&] { theirFrames = decodeWithLibltc(std::span(samples), ltc_decoder_write_float); });
        const double libltcBytes =
            secondsOf([&] { theirFrames = decodeWithLibltc(std::span(bytes), ltc_decoder_write); });
        ratios.push_back(libltc / own);
        byteRatios.push_back(libltcBytes / own);
        singleRatios.push_back(libltc / single);
        ours.push_back(static_cast<double>(samples.size()) / own);
        theirs.push_back(static_cast<double>(samples.size()) / libltc);
    }
    state.counters["times_libltc"] = median(ratios);
    state.counters["times_libltc_8bit"] = median(byteRatios);
    state.counters["times_libltc_sample_by_sample"] = median(singleRatios);
    state.counters["samples/s"] = median(ours);
    state.counters["libltc_samples/s"] = median(theirs);
    state.counters["frames_of_15000"] = static_cast<double>(ourFrames);
    state.counters["libltc_frames"] = static_cast<double>(theirFrames);
}

/// Budget: `times_memcpy` at most 2, for one block of 64 channels.
void levelsOf64Channels(benchmark::State& state) {
    constexpr std::size_t channelCount = 64;
    constexpr int repetitions = 200;
    std::vector<float> samples(channelCount * blockFrames);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<float>(i * 2'654'435'761U % 65'536U) / 32'768.0F - 1.0F;
    }
    std::vector<float> copy(samples.size());
    std::vector<float> levels(channelCount);
    std::vector<double> ratios, microseconds;
    for (auto _ : state) {
        const double copying = secondsOf([&] {
            for (int i = 0; i < repetitions; ++i) {
                std::memcpy(copy.data(), samples.data(), samples.size() * sizeof(float));
                benchmark::ClobberMemory();
            }
        });
        const double measuring = secondsOf([&] {
            for (int i = 0; i < repetitions; ++i) {
                for (std::size_t channel = 0; channel < channelCount; ++channel) {
                    levels[channel] = tessivo::peakLevel(
                        std::span(samples).subspan(channel * blockFrames, blockFrames));
                }
                benchmark::ClobberMemory();
            }
        });
        ratios.push_back(measuring / copying);
        microseconds.push_back(measuring / repetitions * 1e6);
    }
    state.counters["times_memcpy"] = median(ratios);
    state.counters["us_per_block"] = median(microseconds);
}

BENCHMARK(decodeTenMinutes)->Iterations(7)->Unit(benchmark::kMillisecond);
BENCHMARK(levelsOf64Channels)->Iterations(50)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
