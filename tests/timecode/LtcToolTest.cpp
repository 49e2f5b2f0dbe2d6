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
using tessivo::text;

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

template <typename Integer>
Integer integerAt(const std::string& bytes, std::size_t position) {
    Integer value;
    std::memcpy(&value, bytes.data() + position, sizeof value);
    return value;
}

struct Wav {
    std::uint32_t sampleRate;
    std::vector<float> samples;
};

/// Mono 16-bit PCM, as RIFF/WAVE describes it; anything else fails the test.
Wav readWav(const std::string& path) {
    const std::string bytes = tessivo::test::readFile(path);
    REQUIRE(bytes.size() >= 44);
    CHECK(bytes.substr(0, 4) == "RIFF");
    CHECK(integerAt<std::uint32_t>(bytes, 4) == bytes.size() - 8);
    CHECK(bytes.substr(8, 8) == "WAVEfmt ");
    CHECK(integerAt<std::uint32_t>(bytes, 16) == 16);
    CHECK(integerAt<std::uint16_t>(bytes, 20) == 1);
    CHECK(integerAt<std::uint16_t>(bytes, 22) == 1);
    Wav wav{integerAt<std::uint32_t>(bytes, 24), {}};
    CHECK(integerAt<std::uint32_t>(bytes, 28) == 2 * wav.sampleRate);
    CHECK(integerAt<std::uint16_t>(bytes, 32) == 2);
    CHECK(integerAt<std::uint16_t>(bytes, 34) == 16);
    CHECK(bytes.substr(36, 4) == "data");
    CHECK(integerAt<std::uint32_t>(bytes, 40) == bytes.size() - 44);
    REQUIRE(bytes.size() % 2 == 0);
    for (std::size_t position = 44; position < bytes.size(); position += 2) {
        wav.samples.push_back(static_cast<float>(integerAt<std::int16_t>(bytes, position)) /
                              32'768.0F);
    }
    return wav;
}

}  // namespace

TEST_CASE("what the tool writes is read by two decoders, in sequence, at each rate") {
    struct Row {
        const char* rate;
        const char* start;
        const char* length;
        const char* sampleRate;
        std::size_t frameCount;
        const char* third;
        const char* last;
    };
    const Row rows[] = {
        {"24", "23:59:59:00", "2", "48000", 48, "23:59:59:02", "00:00:00:23"},
        {"25", "09:59:59:24", "60", "44100", 1500, "10:00:00:01", "10:00:59:23"},
        // Two numbers are skipped at 1:01:00, none at 1:10:00.
        {"29.97df", "01:00:59:28", "0.2", "48000", 6, "01:01:00:02", "01:01:00:05"},
        {"29.97df", "01:09:59:28", "0.2", "48000", 6, "01:10:00:00", "01:10:00:03"},
        {"29.97df", "01:08:59:28", "121", "48000", 3627, "01:09:00:02", "01:11:00:28"},
        {"29.97ndf", "01:00:59:28", "1", "96000", 30, "01:01:00:00", "01:01:00:27"},
        {"30", "00:00:00:00", "3", "192000", 90, "00:00:00:02", "00:00:02:29"},
        {"30", "00:00:00:00", "0.001", "48000", 1, "", "00:00:00:00"},
    };
    const tessivo::test::TemporaryFolder folder;
    const std::string path = folder.path("ltc.wav");
    for (const Row& row : rows) {
        CAPTURE(std::string(row.rate) + " " + row.start);
        const Outcome outcome = run({"--start", row.start, "--rate", row.rate, "--length",
                                     row.length, "--sample-rate", row.sampleRate, path});
        REQUIRE(outcome.errors == "");
        REQUIRE(outcome.code == ExitCode::success);
        const Wav wav = readWav(path);
        CHECK(std::to_string(wav.sampleRate) == row.sampleRate);

        const auto rate = ltc::parseFrameRate(row.rate);
        REQUIRE(rate);
        const double framesPerSecond = static_cast<double>(rate->numerator) / rate->denominator;
        const double seconds = (static_cast<double>(row.frameCount) + 1.0 / 80.0) / framesPerSecond;
        CHECK(std::abs(static_cast<double>(wav.samples.size()) - seconds * wav.sampleRate) <= 1.0);

        std::vector<std::string> expected;
        auto timecode = ltc::parseTimecode(row.start, *rate);
        REQUIRE(timecode);
        for (std::size_t i = 0; i < row.frameCount; ++i) {
            expected.push_back(toText(*timecode));
            timecode = next(*timecode, *rate);
        }
        CHECK(expected.back() == row.last);
        if (row.frameCount < 3) {
            continue;  // too short for any decoder to find its pace
        }
        CHECK(expected[2] == row.third);

        const auto own = tessivo::decodeAll(wav.samples);
        const auto libltc =
            tessivo::decodeWithLibltc(wav.samples, static_cast<int>(wav.sampleRate / 25));
        REQUIRE(own.size() >= row.frameCount - 2);
        REQUIRE(libltc.size() >= row.frameCount - 2);
        for (std::size_t back = 1; back <= row.frameCount - 2; ++back) {
            const std::string& sent = expected[expected.size() - back];
            REQUIRE(text(own[own.size() - back]) == sent);
            REQUIRE(text(libltc[libltc.size() - back].frame) == sent);
            REQUIRE(libltc[libltc.size() - back].dropFrame == rate->dropFrame);
        }
    }
}

TEST_CASE("level and noise are what was asked for") {
    struct Row {
        const char* level;
        const char* noise;
        double peak;
        double effective;  // nearly that of a square wave
    };
    const tessivo::test::TemporaryFolder folder;
    const std::string path = folder.path("ltc.wav");
    for (const Row& row : {Row{"0", nullptr, 1.0, 1.0}, Row{"-20", nullptr, 0.1, 0.1},
                           Row{"-60", nullptr, 0.001, 0.001}, Row{"-90", "-20", 0.0, 0.1}}) {
        std::vector<std::string_view> arguments = {"--start", "01:00:00:00", "--rate",   "25",
                                                   "--level", row.level,     "--length", "2"};
        if (row.noise != nullptr) {
            arguments.insert(arguments.end(), {"--noise", row.noise});
        }
        arguments.push_back(path);
        REQUIRE(run(arguments).code == ExitCode::success);
        const Wav wav = readWav(path);
        double peak = 0.0, squares = 0.0;
        for (const float sample : wav.samples) {
            peak = std::max(peak, std::abs(double{sample}));
            squares += double{sample} * double{sample};
        }
        if (row.noise == nullptr) {
            CHECK(peak == doctest::Approx(row.peak).epsilon(0.02));
        }
        const double effective = std::sqrt(squares / static_cast<double>(wav.samples.size()));
        CHECK(effective == doctest::Approx(row.effective).epsilon(0.05));
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
