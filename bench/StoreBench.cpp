#include "Library.h"
#include "model/ShowJson.h"
#include "model/ShowLibrary.h"
#include "platform/posix/FileJournal.h"
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
#include <iostream>
#include <string>
#include <vector>

using namespace tessivo;

namespace {

/// As many shows as the first argument says, of as many songs as the second.
std::vector<Show> libraryFor(const benchmark::State& state) {
    return bench::makeLibrary(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)),
                              3);
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

/// The song that is edited in what follows, in the middle of its show.
void rename(Show& show, std::int64_t number) {
    show.songs[show.songs.size() / 2].title = "Chanson " + std::to_string(number);
}

/// The record after an edit of one show.
void editLibrary(benchmark::State& state) {
    ShowLibrary library(libraryFor(state));
    const std::size_t middle = library.shows().size() / 2;
    std::int64_t number = 0;
    library.record(std::nullopt, number);  // the other shows are encoded once
    for (auto _ : state) {
        library.edit(middle, {}, [&](Show& show) { rename(show, ++number); });
        benchmark::DoNotOptimize(library.record(std::nullopt, number));
    }
    state.counters["bytes"] = static_cast<double>(library.record(std::nullopt, number).size());
}

void decodeLibrary(benchmark::State& state) {
    const std::string json = encodeJson(PersistedData{libraryFor(state), std::nullopt, 0});
    for (auto _ : state) {
        benchmark::DoNotOptimize(decodePersistedData(json));
    }
}

/// An edit with its save beside its yardsticks, in turn, so that a busy disk is busy for all.
void saveLibrary(benchmark::State& state) {
    ShowLibrary library(libraryFor(state));
    const std::size_t middle = library.shows().size() / 2;
    const test::TemporaryFolder folder;
    FilePreferencesStore store(folder.path());
    store.takeHold();
    Samples save;
    Samples record;
    Samples write;
    Samples undo;
    Samples line;
    ShowHistory history;
    FileJournal journal(folder.path("journal"), std::cerr);
    std::int64_t number = 0;
    for (auto _ : state) {
        ++number;
        const auto edit = [&] {
            library.edit(middle, {}, [&](Show& show) { rename(show, number); });
        };
        save.time([&] {
            edit();
            store.setData("record", library.record(std::nullopt, number));
        });
        record.time([&] {
            edit();
            library.record(std::nullopt, number);
        });
        // That the edit can be taken back is part of what was timed above; here it is alone.
        undo.time([&] {
            Show before = library.shows()[middle];
            rename(before, 0);
            history.add(middle, std::move(before), library.shows()[middle], {});
        });
        // What a press that moves the cursor costs beside its save.
        line.time([&] { journal.write({}, "Morceau 21/40 «\u00A0Chanson\u00A0», par touche"); });
        const std::string& json = library.record(std::nullopt, number);
        write.time([&] { writePlainly(folder.path("yardstick"), json); });
    }
    const double yardstick = record.percentile(50) + write.percentile(50);
    state.counters["save_min_ms"] = save.percentile(0);
    state.counters["save_median_ms"] = save.percentile(50);
    state.counters["save_p99_ms"] = save.percentile(99);
    state.counters["record_ms"] = record.percentile(50);
    state.counters["undo_share"] = undo.percentile(50) / save.percentile(50);
    state.counters["journal_share"] = line.percentile(50) / save.percentile(50);
    state.counters["journal_p99_ms"] = line.percentile(99);
    state.counters["yardstick_min_ms"] = record.percentile(0) + write.percentile(0);
    state.counters["write_ms"] = write.percentile(50);
    state.counters["write_p99_ms"] = write.percentile(99);
    state.counters["ratio"] = save.percentile(50) / yardstick;
}

/// The library that the budgets are about.
void full(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"shows", "songs"})->Args({200, 40})->Unit(benchmark::kMillisecond);
}

/// How cost grows with the shows, and with the songs of one.
void growing(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"shows", "songs"})->Unit(benchmark::kMillisecond);
    for (const int count : {10, 30, 100, 300, 1000}) {
        benchmark->Args({count, 40})->Args({1, count});
    }
}

}  // namespace

BENCHMARK(editLibrary)->Apply(full)->Apply(growing);
BENCHMARK(decodeLibrary)->Apply(full)->Apply(growing);
BENCHMARK(saveLibrary)->Apply(full)->Iterations(500);
BENCHMARK(saveLibrary)->Apply(growing)->Iterations(20);
