#include "Library.h"
#include "model/ShowJson.h"
#include "platform/posix/FilePreferencesStore.h"
#include "support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;

namespace {

std::vector<Show> fullLibrary() {
    return bench::makeLibrary(200, 40, 3);
}

/// Durations of repeated runs of one thing, in milliseconds.
class Samples {
public:
    void time(const std::function<void()>& run) {
        const auto start = std::chrono::steady_clock::now();
        run();
        const std::chrono::duration<double, std::milli> elapsed =
            std::chrono::steady_clock::now() - start;
        values_.push_back(elapsed.count());
    }
    double percentile(std::size_t percent) {
        std::ranges::sort(values_);
        return values_[(values_.size() - 1) * percent / 100];
    }

private:
    std::vector<double> values_;
};

/// What a save costs at the least: the same bytes beside, on the disk, and in their place.
void writePlainly(const std::string& path, const std::string& bytes) {
    const std::string beside = path + ".new";
    const int file = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const bool written =
        ::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    if (!written || ::fdatasync(file) != 0 || ::close(file) != 0 ||
        std::rename(beside.c_str(), path.c_str()) != 0) {
        std::abort();
    }
}

void encodeLibrary(benchmark::State& state) {
    const auto shows = fullLibrary();
    std::string json;
    for (auto _ : state) {
        json = encodePersistedJson(shows, std::nullopt, 0, std::move(json));
    }
    state.counters["bytes"] = static_cast<double>(json.size());
}

void decodeLibrary(benchmark::State& state) {
    const std::string json = encodePersistedJson(fullLibrary(), std::nullopt, 0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(decodePersistedData(json));
    }
}

/// An edit with its save beside its yardsticks, in turn, so that a busy disk is busy for all.
void saveLibrary(benchmark::State& state) {
    auto shows = fullLibrary();
    const test::TemporaryFolder folder;
    FilePreferencesStore store(folder.path());
    store.takeHold();
    Samples save;
    Samples encode;
    Samples write;
    std::int64_t number = 0;
    std::string json;
    for (auto _ : state) {
        ++number;
        save.time([&] {
            shows[100].songs[20].title = "Chanson " + std::to_string(number);
            json = encodePersistedJson(shows, std::nullopt, number, std::move(json));
            store.setData("record", json);
        });
        encode.time(
            [&] { json = encodePersistedJson(shows, std::nullopt, number, std::move(json)); });
        write.time([&] { writePlainly(folder.path("yardstick"), json); });
    }
    const double yardstick = encode.percentile(50) + write.percentile(50);
    state.counters["save_median_ms"] = save.percentile(50);
    state.counters["save_p99_ms"] = save.percentile(99);
    state.counters["encode_ms"] = encode.percentile(50);
    state.counters["write_ms"] = write.percentile(50);
    state.counters["write_p99_ms"] = write.percentile(99);
    state.counters["ratio"] = save.percentile(50) / yardstick;
}

}  // namespace

BENCHMARK(encodeLibrary)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeLibrary)->Unit(benchmark::kMillisecond);
BENCHMARK(saveLibrary)->Unit(benchmark::kMillisecond)->Iterations(500);
