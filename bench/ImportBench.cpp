#include "import/ColumnLetters.h"
#include "import/XLSXReader.h"
#include "support/WorkbookWriter.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace {

constexpr std::int64_t columns = 30;

/// What other readers of this file need to find its parts (ECMA-376-2, clauses 9.3 and 10.1).
constexpr const char* contentTypes =
    R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
    R"(<Default Extension="rels" ContentType=")"
    R"(application/vnd.openxmlformats-package.relationships+xml"/>)"
    R"(<Override PartName="/xl/workbook.xml" ContentType=")"
    R"(application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/>)"
    R"(<Override PartName="/xl/worksheets/sheet1.xml" ContentType=")"
    R"(application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/>)"
    R"(<Override PartName="/xl/sharedStrings.xml" ContentType=")"
    R"(application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml"/></Types>)";
constexpr const char* packageRelationships =
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="rId1" Target="xl/workbook.xml" Type=")"
    R"(http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument"/>)"
    R"(</Relationships>)";

/// A run sheet as the usual writers store it: texts shared, numbers in the cell, all cells with a
/// style.
std::string makeRunSheet(std::int64_t rows) {
    std::string cells;
    std::vector<std::string> strings;
    for (std::int64_t row = 1; row <= rows; ++row) {
        const std::string number = std::to_string(row);
        cells += "<row r=\"" + number + "\" spans=\"1:" + std::to_string(columns) + "\">";
        for (std::int64_t column = 1; column <= columns; ++column) {
            cells += "<c r=\"" + tessivo::columnLetter(column) + number + "\" s=\"0\"";
            if (column % 2 == 1) {
                cells += " t=\"s\"><v>" + std::to_string(strings.size()) + "</v></c>";
                strings.push_back("<t>Chanson à la fenêtre " + number + "</t>");
            } else {
                cells += "><v>" + std::to_string(row * column) + ".5</v></c>";
            }
        }
        cells += "</row>";
    }
    std::vector<tessivo::test::ZipMember> members =
        tessivo::test::WorkbookWriter({cells}, strings).members();
    members.push_back({.name = "[Content_Types].xml", .content = contentTypes});
    members.push_back({.name = "_rels/.rels", .content = packageRelationships});
    return tessivo::test::zipOf(members);
}

std::size_t cellsIn(std::string_view file) {
    tessivo::WorkProgress progress;
    const auto result = tessivo::XLSXReader::read(file, progress);
    const auto* workbook = std::get_if<tessivo::XLSXWorkbook>(&result);
    return workbook && !workbook->sheets.empty() ? workbook->sheets[0].cells.size() : 0;
}

/// Budget: 20 000 rows at 1 million cells a second; 200 rows in 5 ms.
void readRunSheet(benchmark::State& state) {
    const std::int64_t rows = state.range(0);
    const std::string file = makeRunSheet(rows);
    const auto expected = static_cast<std::size_t>(rows * columns);
    for (auto _ : state) {
        if (cellsIn(file) != expected) {
            state.SkipWithError("cells are missing");
            break;
        }
    }
    state.counters["cells/s"] = benchmark::Counter(static_cast<double>(expected),
                                                   benchmark::Counter::kIsIterationInvariantRate);
    state.counters["file_KiB"] = static_cast<double>(file.size()) / 1024.0;
}

BENCHMARK(readRunSheet)
    ->ArgName("rows")
    ->Arg(10)
    ->Arg(100)
    ->Arg(200)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(20'000)
    ->Unit(benchmark::kMillisecond);

/// What takes longest to read for its size, over and over in a small file. Budget: 10 s.
void readHostile(benchmark::State& state, std::string_view piece) {
    constexpr std::size_t size = std::size_t{160} * 1024 * 1024;
    std::string rows = "<row r=\"1\">";
    while (rows.size() < size) {
        rows += piece;
    }
    const std::string file = tessivo::test::workbookOf(rows);
    for (auto _ : state) {
        benchmark::DoNotOptimize(cellsIn(file));
    }
    state.counters["file_KiB"] = static_cast<double>(file.size()) / 1024.0;
}

BENCHMARK_CAPTURE(readHostile, tags, "<c/>")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readHostile, attributes, R"(<n a="" b="" c="" d=""/>)")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readHostile, entities, R"(<c r="&lt;&lt;&lt;&lt;&lt;&lt;&lt;&lt;"/>)")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readHostile, cells, R"(<c r="A1"><v>1</v></c>)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readHostile, lines, "<v>\n\n\n\n\n\n\n\n</v>")->Unit(benchmark::kMillisecond);

}  // namespace

/// With `--write FILE ROWS`, writes a run sheet for another reader instead of reading it.
int main(int argc, char* argv[]) {
    if (argc == 4 && std::string_view(argv[1]) == "--write") {
        std::ofstream file(argv[2], std::ios::binary);
        file << makeRunSheet(std::atoll(argv[3])) << std::flush;
        return file ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
