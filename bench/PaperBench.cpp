// How long a full show takes to be followed through its microphones and put on paper.
#include <QBuffer>
#include <QDate>
#include <QGuiApplication>
#include <QPdfWriter>

#include "live/HandOvers.h"
#include "live/RunSheet.h"
#include "model/Show.h"
#include "ui/paper/PaperTable.h"
#include "ui/paper/ShowTables.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

namespace {

using namespace tessivo;

constexpr std::int64_t eightInTheEvening = 20 * 3600;

/// As many songs as the argument says, that use each of 12 microphones, most of them in other hands
/// than before.
Show showFor(const benchmark::State& state) {
    Show show;
    show.name = "Gala de fin d'année";
    show.mics.clear();
    for (int i = 1; i <= 12; ++i) {
        show.mics.push_back("HF " + std::to_string(i));
    }
    for (int i = 0; i < state.range(0); ++i) {
        Song song;
        song.title = "Une chanson au titre ordinaire " + std::to_string(i + 1);
        song.ltcTimecode = "10:00:00:00";
        song.duration = 180 + i;
        for (int k = 0; k < 12; ++k) {
            song.guests.push_back(
                {Uuid::random(), "Marie-Ange Dupré " + std::to_string((i + k) % 17),
                 show.mics[static_cast<std::size_t>(k)], "Mix " + std::to_string(k), "-3 dB"});
        }
        show.songs.push_back(std::move(song));
    }
    return show;
}

/// The budgets are about 60.
void songs(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("songs");
    for (const int count : {10, 30, 60, 100, 300, 1000}) {
        benchmark->Arg(count);
    }
}

void followMicrophones(benchmark::State& state) {
    const Show show = showFor(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(handOvers(show));
    }
}
BENCHMARK(followMicrophones)->Apply(songs)->Unit(benchmark::kMicrosecond);

void writeCsv(benchmark::State& state) {
    const Show show = showFor(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(runSheetCsv(runSheet(show, eightInTheEvening)));
    }
}
BENCHMARK(writeCsv)->Apply(songs)->Unit(benchmark::kMicrosecond);

void writePdf(benchmark::State& state) {
    const Show show = showFor(state);
    for (auto _ : state) {
        QBuffer bytes;
        bytes.open(QIODevice::WriteOnly);
        QPdfWriter writer(&bytes);
        if (!paint(writer, tablesOf(show, eightInTheEvening), QStringLiteral("Gala"),
                   QDate(2026, 5, 9))) {
            state.SkipWithError("not painted");
        }
    }
}
BENCHMARK(writePdf)->Apply(songs)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
