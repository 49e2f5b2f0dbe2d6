#include "platform/simulated/SimulatedMainQueue.h"
#include "support/Random.h"
#include "timecode/AudioLevel.h"
#include "timecode/CarefulDecoder.h"
#include "timecode/ChannelSearch.h"
#include "timecode/LtcBiphaseDecoder.h"

#include <benchmark/benchmark.h>
#include <ltc.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <span>
#include <vector>

namespace {

constexpr double sampleRate = 48'000.0;
constexpr std::size_t blockFrames = 512;

double threadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Of the processor, so that other programs don't count.
template <typename Work>
double secondsOf(Work&& work) {
    const double start = threadSeconds();
    work();
    return threadSeconds() - start;
}

double median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + std::ssize(values) / 2);
    return values[values.size() / 2];
}

/// Five seconds of 25 fps timecode from libltc's encoder, in its own 8-bit samples: few enough to
/// stay in the cache, as the blocks of a device do. Streamed from memory, the memory is measured.
std::vector<ltcsnd_sample_t> encodeFiveSeconds() {
    LTCEncoder* encoder = ltc_encoder_create(sampleRate, 25.0, LTC_TV_625_50, 0);
    std::vector<ltcsnd_sample_t> samples;
    for (int frame = 0; frame < 5 * 25; ++frame) {
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

std::vector<float> whiteNoise(std::size_t count) {
    tessivo::test::Random random(1);
    std::vector<float> samples(count);
    std::ranges::generate(samples, [&] { return 0.1F * random.gaussian(); });
    return samples;
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

std::int64_t decodeCarefully(std::span<const float> samples) {
    const tessivo::SimulatedMainQueue clock;
    tessivo::CarefulDecoder decoder(clock);
    std::int64_t frames = 0;
    for (std::size_t start = 0; start < samples.size(); start += blockFrames) {
        decoder.feed(samples.subspan(start, std::min(blockFrames, samples.size() - start)),
                     sampleRate, [&](const tessivo::HeardFrame&) { ++frames; });
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

/// Budget: `times_libltc` at least 18 on timecode, and no more than 2 frames missed. Minima of runs
/// in turn: what else the computer does only ever adds.
void decodeInTurn(benchmark::State& state, std::vector<float> samples) {
    double ours = 1e9, careful = 1e9, libltc = 1e9;
    std::int64_t ourFrames = 0, theirFrames = 0;
    for (auto _ : state) {
        ours = std::min(ours, secondsOf([&] { ourFrames = decode(samples); }));
        careful = std::min(careful,
                           secondsOf([&] { benchmark::DoNotOptimize(decodeCarefully(samples)); }));
        libltc = std::min(libltc, secondsOf([&] {
                              theirFrames =
                                  decodeWithLibltc(std::span(samples), ltc_decoder_write_float);
                          }));
    }
    state.counters["times_libltc"] = libltc / ours;
    state.counters["carefully_times_libltc"] = libltc / careful;
    state.counters["samples/s"] = static_cast<double>(samples.size()) / ours;
    state.counters["frames_of_125"] = static_cast<double>(ourFrames);
    state.counters["libltc_frames"] = static_cast<double>(theirFrames);
}

void decodeTimecode(benchmark::State& state) {
    decodeInTurn(state, toFloat(encodeFiveSeconds()));
}
void decodeSilence(benchmark::State& state) {
    decodeInTurn(state, std::vector<float>(240'000));
}
void decodeNoise(benchmark::State& state) {
    decodeInTurn(state, whiteNoise(240'000));
}

/// Budget: `percent_of_core` at most 3, for the levels of 64 channels at 96 kHz and the search for
/// timecode on them, all with white noise, which takes longest.
void searchChannels(benchmark::State& state) {
    const auto channelCount = static_cast<std::size_t>(state.range(0));
    const std::vector<float> samples = whiteNoise(channelCount * blockFrames);
    std::vector<const float*> channels;
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        channels.push_back(samples.data() + channel * blockFrames);
    }
    const tessivo::AudioBlock block{channels, blockFrames, 96'000.0};
    const tessivo::SimulatedMainQueue clock;
    tessivo::ChannelSearch search(clock);
    std::vector<float> levels(channelCount);
    double seconds = 1e9;
    for (auto _ : state) {
        seconds = std::min(seconds, secondsOf([&] {
                               for (std::size_t channel = 0; channel < channelCount; ++channel) {
                                   levels[channel] = tessivo::peakLevel(block.channel(channel));
                               }
                               benchmark::DoNotOptimize(search.search(block, levels));
                           }));
    }
    state.counters["min_us"] = seconds * 1e6;
    state.counters["percent_of_core"] = seconds / (blockFrames / block.sampleRate) * 100.0;
}

/// Budget: `times_memcpy` at most 2, for one block of 64 channels.
void levelsOfChannels(benchmark::State& state) {
    const auto channelCount = static_cast<std::size_t>(state.range(0));
    constexpr int repetitions = 200;
    std::vector<float> samples(channelCount * blockFrames);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<float>(i * 2'654'435'761U % 65'536U) / 32'768.0F - 1.0F;
    }
    std::vector<float> copy(samples.size());
    std::vector<float> levels(channelCount);
    std::vector<double> ratios, microseconds, copyingMicroseconds;
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
        copyingMicroseconds.push_back(copying / repetitions * 1e6);
    }
    state.counters["times_memcpy"] = median(ratios);
    state.counters["us_per_block"] = median(microseconds);
    state.counters["min_us"] = std::ranges::min(microseconds);
    state.counters["memcpy_min_us"] = std::ranges::min(copyingMicroseconds);
}

BENCHMARK(decodeTimecode)->Iterations(100)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeSilence)->Iterations(100)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeNoise)->Iterations(100)->Unit(benchmark::kMillisecond);
void channels(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("channels")->RangeMultiplier(2)->Range(1, 128);
}

BENCHMARK(searchChannels)->Apply(channels)->Iterations(200)->Unit(benchmark::kMillisecond);
BENCHMARK(levelsOfChannels)->Apply(channels)->Iterations(50)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
