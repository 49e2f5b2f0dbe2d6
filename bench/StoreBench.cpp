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

/// The song that is edited in what follows, in the middle of it all.
void rename(Show& show, std::int64_t number) {
    show.songs[20].title = "Chanson " + std::to_string(number);
}

/// The record after an edit of one show.
void editLibrary(benchmark::State& state) {
    ShowLibrary library(fullLibrary());
    std::int64_t number = 0;
    library.record(std::nullopt, number);  // the other shows are encoded once
    for (auto _ : state) {
        library.edit(100, {}, [&](Show& show) { rename(show, ++number); });
        benchmark::DoNotOptimize(library.record(std::nullopt, number));
    }
    state.counters["bytes"] = static_cast<double>(library.record(std::nullopt, number).size());
}

void decodeLibrary(benchmark::State& state) {
    const std::string json = encodeJson(PersistedData{fullLibrary(), std::nullopt, 0});
    for (auto _ : state) {
        benchmark::DoNotOptimize(decodePersistedData(json));
    }
}

/// An edit with its save beside its yardsticks, in turn, so that a busy disk is busy for all.
void saveLibrary(benchmark::State& state) {
    ShowLibrary library(fullLibrary());
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
        const auto edit = [&] { library.edit(100, {}, [&](Show& show) { rename(show, number); }); };
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
            Show before = library.shows()[100];
            rename(before, 0);
            history.add(100, std::move(before), library.shows()[100], {});
        });
        // What a press that moves the cursor costs beside its save.
        line.time([&] { journal.write({}, "Morceau 21/40 «\u00A0Chanson\u00A0», par touche"); });
        const std::string& json = library.record(std::nullopt, number);
        write.time([&] { writePlainly(folder.path("yardstick"), json); });
    }
    const double yardstick = record.percentile(50) + write.percentile(50);
    state.counters["save_median_ms"] = save.percentile(50);
    state.counters["save_p99_ms"] = save.percentile(99);
    state.counters["record_ms"] = record.percentile(50);
    state.counters["undo_share"] = undo.percentile(50) / save.percentile(50);
    state.counters["journal_share"] = line.percentile(50) / save.percentile(50);
    state.counters["journal_p99_ms"] = line.percentile(99);
    state.counters["write_ms"] = write.percentile(50);
    state.counters["write_p99_ms"] = write.percentile(99);
    state.counters["ratio"] = save.percentile(50) / yardstick;
}

}  // namespace

BENCHMARK(editLibrary)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeLibrary)->Unit(benchmark::kMillisecond);
BENCHMARK(saveLibrary)->Unit(benchmark::kMillisecond)->Iterations(500);
