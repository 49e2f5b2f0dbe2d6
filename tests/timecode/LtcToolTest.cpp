#include "ltc/LtcEncoder.h"
#include "ltc/LtcTool.h"
#include "support/TemporaryFolder.h"
#include "timecode/LtcSignal.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace ltc = tessivo::ltc;
using ltc::ExitCode;
using Frame = tessivo::LtcBiphaseDecoder::Frame;

namespace {

struct Outcome {
    ExitCode code;
    std::string output, errors;
};

Outcome run(const std::vector<std::string_view>& arguments) {
    std::ostringstream output, errors;
    const ExitCode code = ltc::runLtcTool(arguments, output, errors);
    return {code, output.str(), errors.str()};
}

std::string littleEndian(std::size_t value, int byteCount) {
    std::string bytes;
    for (; byteCount > 0; --byteCount, value >>= 8U) {
        bytes += static_cast<char>(value);
    }
    return bytes;
}

/// Mono 16-bit PCM, as RIFF/WAVE describes it; anything else fails the test.
std::vector<float> readWav(const std::string& path, std::size_t sampleRate) {
    const std::string bytes = tessivo::test::readFile(path);
    REQUIRE(bytes.size() >= 44);
    CHECK(bytes.substr(0, 44) == "RIFF" + littleEndian(bytes.size() - 8, 4) + "WAVEfmt " +
                                     littleEndian(16, 4) + littleEndian(1, 2) + littleEndian(1, 2) +
                                     littleEndian(sampleRate, 4) + littleEndian(2 * sampleRate, 4) +
                                     littleEndian(2, 2) + littleEndian(16, 2) + "data" +
                                     littleEndian(bytes.size() - 44, 4));
    std::vector<std::int16_t> values((bytes.size() - 44) / 2);
    std::memcpy(values.data(), bytes.data() + 44, bytes.size() - 44);
    std::vector<float> samples;
    for (const std::int16_t value : values) {
        samples.push_back(static_cast<float>(value) / 32'768.0F);
    }
    return samples;
}

}  // namespace

TEST_CASE("what the tool writes is read by two decoders, in sequence, at each rate") {
    struct Row {
        const char* rate;
        const char* start;
        const char* length;
        int sampleRate;
        std::size_t frameCount;
        const char* third;
        const char* last;
    };
    const Row rows[] = {
        {"24", "23:59:59:00", "2", 48'000, 48, "23:59:59:02", "00:00:00:23"},
        {"25", "09:59:59:24", "60", 44'100, 1500, "10:00:00:01", "10:00:59:23"},
        // Two numbers are skipped at 1:01:00, none at 1:10:00.
        {"29.97df", "01:00:59:28", "0.2", 48'000, 6, "01:01:00:02", "01:01:00:05"},
        {"29.97df", "01:09:59:28", "0.2", 48'000, 6, "01:10:00:00", "01:10:00:03"},
        {"29.97df", "01:08:59:28", "121", 48'000, 3627, "01:09:00:02", "01:11:00:28"},
        {"29.97ndf", "01:00:59:28", "1", 96'000, 30, "01:01:00:00", "01:01:00:27"},
        {"30", "00:00:00:00", "3", 192'000, 90, "00:00:00:02", "00:00:02:29"},
    };
    const tessivo::test::TemporaryFolder folder;
    const std::string path = folder.path("ltc.wav");
    for (const Row& row : rows) {
        CAPTURE(std::string(row.rate) + " " + row.start);
        const std::string sampleRate = std::to_string(row.sampleRate);
        const Outcome outcome = run({"--start", row.start, "--rate", row.rate, "--length",
                                     row.length, "--sample-rate", sampleRate, path});
        REQUIRE(outcome.errors == "");
        REQUIRE(outcome.code == ExitCode::success);
        const auto samples = readWav(path, static_cast<std::size_t>(row.sampleRate));

        const auto rate = ltc::parseFrameRate(row.rate);
        REQUIRE(rate);
        const double framesPerSecond = static_cast<double>(rate->numerator) / rate->denominator;
        const double seconds = (static_cast<double>(row.frameCount) + 1.0 / 80.0) / framesPerSecond;
        CHECK(std::abs(static_cast<double>(samples.size()) - seconds * row.sampleRate) <= 1.0);

        // No decoder has found its pace before the third frame.
        const auto third = ltc::parseTimecode(row.third, *rate);
        REQUIRE(third);
        const auto expected =
            tessivo::encodeLtc(row.rate, row.frameCount - 2, 8'000, *third).frames;
        CHECK(text(std::span(expected).last(1)) == row.last + std::string(" "));
        std::vector<Frame> libltc;
        for (const auto& found : tessivo::decodeWithLibltc(samples, row.sampleRate / 25)) {
            CHECK(found.dropFrame == rate->dropFrame);
            libltc.push_back(found.frame);
        }
        for (const std::vector<Frame>& found : {tessivo::decodeAll(samples), libltc}) {
            REQUIRE(found.size() >= expected.size());
            CHECK(text(std::span(found).last(expected.size())) == text(expected));
        }
    }
}

TEST_CASE("level and noise are what was asked for, a file no shorter than one frame") {
    struct Row {
        std::vector<std::string_view> options;
        double effective;  // nearly that of a square wave
    };
    const tessivo::test::TemporaryFolder folder;
    const std::string path = folder.path("ltc.wav");
    for (const Row& row : {Row{{"--level", "0", "--length", "0.001"}, 1.0},
                           Row{{"--level", "-20", "--length", "2"}, 0.1},
                           Row{{"--level", "-60", "--length", "2"}, 0.001},
                           Row{{"--level", "-90", "--noise", "-20", "--length", "2"}, 0.1}}) {
        std::vector<std::string_view> arguments = {"--start", "01:00:00:00", "--rate", "25", path};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        REQUIRE(run(arguments).code == ExitCode::success);
        const std::vector<float> samples = readWav(path, 48'000);
        CHECK(samples.size() >= 48'000 / 25);
        double squares = 0.0;
        for (const float sample : samples) {
            squares += double{sample} * double{sample};
        }
        CHECK(std::sqrt(squares / static_cast<double>(samples.size())) ==
              doctest::Approx(row.effective).epsilon(0.05));
    }
}

TEST_CASE("each frame has an even number of zeros, by the correction bit of its rate") {
    for (const char* name : {"24", "25", "29.97df", "30"}) {
        const auto rate = ltc::parseFrameRate(name);
        REQUIRE(rate);
        ltc::Timecode timecode{.hours = 12, .minutes = 34, .seconds = 56, .frames = 7};
        std::size_t timesSet = 0;
        for (int i = 0; i < 100; ++i, timecode = next(timecode, *rate)) {
            const auto bits = frameBits(timecode, *rate);
            REQUIRE((80 - bits.count()) % 2 == 0);
            const bool is25 = rate->counted == 25;
            timesSet += bits[is25 ? 59 : 27] ? 1U : 0U;
            REQUIRE_FALSE(bits[is25 ? 27 : 59]);
        }
        CHECK(timesSet > 0);
    }
}

TEST_CASE("wrong arguments are refused with a reason, and nothing is written") {
    const tessivo::test::TemporaryFolder folder;
    const std::string path = folder.path("ltc.wav");
    struct Row {
        std::vector<std::string_view> arguments;  ///< after a start and a rate that are good
        const char* reason;
    };
    const Row rows[] = {
        {{}, "no file named"},
        {{path, "other.wav"}, "more than one file"},
        {{"--rate", "29.97", path}, "--rate must be"},
        {{"--start", "01:00:00:25", path}, "isn't a timecode"},
        {{"--start", "24:00:00:00", path}, "isn't a timecode"},
        {{"--start", "1:00:00:00", path}, "isn't a timecode"},
        {{"--start", "01:00:00:-1", path}, "isn't a timecode"},
        {{"--start", "00:01:00:01", "--rate", "29.97df", path}, "isn't a timecode"},
        {{"--length", "0", path}, "--length"},
        {{"--length", "nan", path}, "--length"},
        {{"--length", "5s", path}, "--length"},
        {{"--level", "1", path}, "--level"},
        {{"--noise", "loud", path}, "--noise"},
        {{"--sample-rate", "100", path}, "--sample-rate"},
        {{"--sample-rate", "44100.5", path}, "whole"},
        {{path, "--length"}, "needs a value"},
        {{"--loud", "1", path}, "unknown option"},
        {{"--length", "86400", "--sample-rate", "768000", path}, "can't be that long"},
    };
    CHECK(run({}).errors.find("--rate is missing") != std::string::npos);
    CHECK(run({"--rate", "25", path}).errors.find("--start is missing") != std::string::npos);
    for (const Row& row : rows) {
        std::vector<std::string_view> arguments = {"--start", "01:00:00:00", "--rate", "25"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const Outcome outcome = run(arguments);
        CHECK(outcome.code == ExitCode::wrongUsage);
        CHECK(outcome.output == "");
        CHECK_MESSAGE(outcome.errors.find(row.reason) != std::string::npos, outcome.errors);
        CHECK_FALSE(std::filesystem::exists(path));
    }
}

TEST_CASE("help is no failure, a file that can't be written is") {
    const Outcome help = run({"--help"});
    CHECK(help.code == ExitCode::success);
    CHECK(help.output.starts_with("Usage: tessivo-ltc"));
    CHECK(help.errors == "");

    const tessivo::test::TemporaryFolder folder;
    const std::string path = folder.path("ltc.wav");
    const std::string inside = path + "/no/such/folder.wav";
    const Outcome failed = run({"--start", "01:00:00:00", "--rate", "25", inside});
    CHECK(failed.code == ExitCode::writeFailed);
    CHECK(failed.errors.find(inside) != std::string::npos);
}
