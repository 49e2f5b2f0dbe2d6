#include "live/AutoAdvance.h"
#include "platform/simulated/SimulatedMainQueue.h"
#include "support/Random.h"
#include "timecode/CarefulDecoder.h"
#include "timecode/LtcBiphaseDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <mutex>
#include <numbers>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using tessivo::LtcBiphaseDecoder;
using tessivo::test::Random;
using Loop = std::vector<float>;

namespace {

constexpr double sampleRate = 48'000.0;
constexpr double pi = std::numbers::pi;

/// Two loops whose lengths have no common divisor, one over the other, sound for 720 years before
/// the same samples come again: hours of signal for the price of two sums.
constexpr std::size_t firstLength = 1'048'573, secondLength = 1'040'387;

Loop white(std::size_t length, Random& random) {
    Loop loop(length);
    std::ranges::generate(loop, [&] { return 0.05F * random.gaussian(); });
    return loop;
}

/// White noise through low-passes of the first order an octave and a half apart: 3 dB per octave.
Loop pink(std::size_t length, Random& random) {
    Loop loop(length);
    std::array<double, 6> levels{};
    for (float& sample : loop) {
        const double input = 0.05 * random.gaussian();
        double sum = input * 0.3;
        double passing = 0.7;
        for (double& level : levels) {
            level += passing * (input - level);
            sum += level * 0.5;
            passing /= 2.8;
        }
        sample = static_cast<float>(sum);
    }
    return loop;
}

/// What an idle converter of 16 bits gives: two even draws make its dither.
Loop dither(std::size_t length, Random& random) {
    Loop loop(length);
    std::ranges::generate(
        loop, [&] { return static_cast<float>(random.below(65'536)) / 65'536.0F - 0.5F; });
    return loop;
}

/// Noise in a band as wide as a tenth of its middle, where timecode has its power.
Loop band(std::size_t length, Random& random) {
    Loop loop(length);
    const double radius = 0.99, turn = 2.0 * radius * std::cos(2.0 * pi * 1500.0 / sampleRate);
    double last = 0.0, before = 0.0;
    for (float& sample : loop) {
        const double now = turn * last - radius * radius * before + 0.01 * random.gaussian();
        before = std::exchange(last, now);
        sample = static_cast<float>(now);
    }
    return loop;
}

/// Notes of random pitch and length with six harmonics that die away, and a drum of noise.
Loop music(std::size_t length, Random& random) {
    Loop loop(length);
    for (std::size_t start = 0; start < length;) {
        const std::size_t count = std::min(length - start, 4000 + random.below(16'000));
        const double pitch = 55.0 * std::exp2(static_cast<double>(random.below(48)) / 12.0);
        const bool isDrum = random.below(4) == 0;
        for (std::size_t i = 0; i < count; ++i) {
            const double time = static_cast<double>(i) / sampleRate;
            double sum = 0.0;
            for (int harmonic = 1; harmonic <= 6; ++harmonic) {
                sum += std::sin(2.0 * pi * pitch * harmonic * time) / harmonic;
            }
            if (isDrum) {
                sum += 2.0 * std::exp(-time * 30.0) * random.gaussian();
            }
            loop[start + i] = static_cast<float>(0.2 * std::exp(-time * 4.0) * sum);
        }
        start += count;
    }
    return loop;
}

/// Glottal pulses at a wandering pitch through two formants, with hissing and pauses between.
Loop speech(std::size_t length, Random& random) {
    Loop loop(length);
    for (std::size_t start = 0; start < length;) {
        const std::size_t count = std::min(length - start, 3000 + random.below(9000));
        const std::size_t kind = random.below(5);
        const double pitch = 90.0 + static_cast<double>(random.below(120));
        const std::array<double, 2> formants = {300.0 + static_cast<double>(random.below(500)),
                                                900.0 + static_cast<double>(random.below(1500))};
        std::array<double, 2> last{}, before{};
        double phase = 0.0;
        for (std::size_t i = 0; i < count; ++i) {
            phase += pitch / sampleRate;
            const bool pulses = phase >= 1.0;
            phase -= pulses ? 1.0 : 0.0;
            double input = 0.0005 * random.gaussian();
            if (kind == 0) {
                input *= 20.0;
            } else if (kind < 4 && pulses) {
                input += 0.3;
            }
            double sum = kind == 0 ? input : 0.0;
            for (std::size_t k = 0; k < formants.size(); ++k) {
                const double now = 1.96 * std::cos(2.0 * pi * formants[k] / sampleRate) * last[k] -
                                   0.9604 * before[k] + input;
                before[k] = std::exchange(last[k], now);
                sum += 0.2 * now;
            }
            loop[start + i] = static_cast<float>(sum);
        }
        start += count;
    }
    return loop;
}

struct Kind {
    const char* name;
    std::function<Loop(std::size_t, Random&)> make;
    bool isRounded = false;  ///< to whole steps of 16 bits
};

const Kind kinds[] = {
    {"white noise", white},     {"pink noise", pink},          {"16-bit dither", dither, true},
    {"noise at 1.5 kHz", band}, {"music, synthesised", music}, {"speech, synthesised", speech},
};

/// A show of 20 songs, five minutes each from midnight on: where false frames hit most.
tessivo::Show showFromMidnight() {
    tessivo::Show show;
    for (int i = 0; i < 20; ++i) {
        std::array<char, 16> start{};
        std::snprintf(start.data(), start.size(), "%02d:%02d:00:00", i / 12, i % 12 * 5);
        show.songs.emplace_back().ltcTimecode = start.data();
    }
    return show;
}

/// What came out of one way of decoding, and moved the cursor.
struct Count {
    std::int64_t frames = 0;
    std::int64_t moves = 0;
    std::int64_t cursor = -1;

    void take(const tessivo::Show& show, const LtcBiphaseDecoder::Frame& frame) {
        ++frames;
        const std::int64_t number =
            (frame.hours * 3600 + frame.minutes * 60 + frame.seconds) * 25 + frame.frames;
        if (const auto song = tessivo::songTriggeredBy(show, cursor, number, 25)) {
            ++moves;
            cursor = static_cast<std::int64_t>(*song);
        }
    }
};

/// What a stretch of sound made of both ways of decoding.
struct Result {
    double hours = 0.0;
    Count plainly, carefully;

    void add(const Result& other) {
        hours += other.hours;
        plainly.frames += other.plainly.frames;
        plainly.moves += other.plainly.moves;
        carefully.frames += other.carefully.frames;
        carefully.moves += other.carefully.moves;
    }
    void print(const Kind& kind) const {
        std::printf("%-22s %8.0f %10lld %6lld %10lld %6lld\n", kind.name, hours,
                    static_cast<long long>(plainly.frames), static_cast<long long>(plainly.moves),
                    static_cast<long long>(carefully.frames),
                    static_cast<long long>(carefully.moves));
        std::fflush(stdout);
    }
};

Result listen(const Kind& kind, double hours, std::uint64_t seed, const tessivo::Show& show) {
    Random random(seed);
    const Loop first = kind.make(firstLength, random), second = kind.make(secondLength, random);
    const tessivo::SimulatedMainQueue clock;
    LtcBiphaseDecoder plain(clock);
    tessivo::CarefulDecoder careful(clock);
    Result result;
    result.hours = hours;
    std::array<float, 512> block;
    std::size_t i = 0, k = 0;
    const auto blocks = static_cast<std::int64_t>(hours * 3600.0 * sampleRate / block.size());
    for (std::int64_t n = 0; n < blocks; ++n) {
        for (std::size_t filled = 0; filled < block.size();) {
            const std::size_t count =
                std::min({block.size() - filled, firstLength - i, secondLength - k});
            std::transform(&first[i], &first[i] + count, &second[k], &block[filled], std::plus());
            filled += count;
            i = (i + count) % firstLength;
            k = (k + count) % secondLength;
        }
        if (kind.isRounded) {
            std::ranges::transform(block, block.begin(),
                                   [](float sample) { return std::nearbyint(sample) / 32'768; });
        }
        plain.feed(block, [&](const auto& frame) { result.plainly.take(show, frame); });
        careful.feed(block, sampleRate,
                     [&](const auto& heard) { result.carefully.take(show, heard.frame); });
    }
    return result;
}

/// So many hours of each kind, in shares that the processor's cores take in turn. Each share has a
/// seed of its own, so the sums are the same on any number of cores.
void run(const std::vector<Kind>& chosen, double hours) {
    constexpr double shareHours = 10.0;
    const tessivo::Show show = showFromMidnight();
    const auto shareCount = static_cast<std::size_t>(std::ceil(hours / shareHours));
    std::vector<Result> sums(chosen.size());
    std::size_t next = 0;
    std::mutex mutex;
    const auto work = [&] {
        std::unique_lock lock(mutex);
        while (next < shareCount * chosen.size()) {
            const std::size_t share = next / chosen.size(), kind = next % chosen.size();
            ++next;
            lock.unlock();
            const double length =
                std::min(shareHours, hours - static_cast<double>(share) * shareHours);
            const Result result = listen(chosen[kind], length, 7 + share, show);
            lock.lock();
            sums[kind].add(result);
            sums[kind].print(chosen[kind]);
        }
    };
    std::vector<std::jthread> threads(std::max(1U, std::thread::hardware_concurrency()));
    std::ranges::generate(threads, [&] { return std::jthread(work); });
}

}  // namespace

/// bench_ltc_false_frames [HOURS [KIND]]: what both ways of decoding make of that much sound
/// without timecode, 1 hour of each kind by itself. The figures of a kind are told as they grow.
int main(int argumentCount, char** arguments) {
    const double hours = argumentCount > 1 ? std::atof(arguments[1]) : 1.0;
    const std::string only = argumentCount > 2 ? arguments[2] : "";
    std::vector<Kind> chosen;
    std::ranges::copy_if(kinds, std::back_inserter(chosen), [&](const Kind& kind) {
        return std::string(kind.name).starts_with(only);
    });
    std::printf("%-22s %8s %10s %6s %10s %6s\n", "without timecode", "hours", "frames", "moves",
                "carefully", "moves");
    run(chosen, hours);
}
