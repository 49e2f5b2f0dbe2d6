#include "timecode/LtcSignal.h"

#include <doctest/doctest.h>

#include <span>
#include <string>
#include <vector>

using namespace tessivo;

TEST_CASE("what our encoder makes is read by an independent decoder, in sequence, at each rate") {
    struct Row {
        const char* rate;
        ltc::Timecode start;
        std::size_t frameCount;
        int sampleRate;
        const char* last;
    };
    const Row rows[] = {
        {"24", {23, 59, 59, 0}, 48, 48'000, "00:00:00:23 "},
        {"25", {9, 59, 59, 24}, 1500, 44'100, "10:00:59:23 "},
        // Two numbers are skipped at 1:01:00 and 1:11:00, none at 1:10:00.
        {"29.97df", {1, 0, 59, 28}, 6, 48'000, "01:01:00:05 "},
        {"29.97df", {1, 8, 59, 28}, 3627, 48'000, "01:11:00:28 "},
        {"29.97ndf", {1, 0, 59, 28}, 30, 96'000, "01:01:00:27 "},
        {"30", {0, 0, 0, 0}, 90, 192'000, "00:00:02:29 "},
    };
    for (const Row& row : rows) {
        CAPTURE(row.last);
        const LtcSignal signal = encodeLtc(row.rate, row.frameCount, row.sampleRate, row.start);
        std::vector<LtcBiphaseDecoder::Frame> found;
        for (const auto& [frame, isDropFrame, end] :
             decodeWithLibltc(signal.samples, row.sampleRate / 25)) {
            CHECK(isDropFrame == std::string(row.rate).ends_with("97df"));
            found.push_back(frame);
        }
        // It has found its pace by the third frame.
        const auto expected = std::span(signal.frames).subspan(2);
        REQUIRE(found.size() >= expected.size());
        CHECK(text(std::span(found).last(expected.size())) == text(expected));
        CHECK(text(expected.last(1)) == row.last);
    }
}
