#pragma once

#include "model/PersistedData.h"
#include "model/Show.h"
#include "support/Random.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessivo::test {

/// Makes records of every shape that the model can hold; the same seed makes the same ones.
class RandomRecords : public Random {
public:
    using Random::Random;

    Uuid uuid() {
        Uuid uuid;
        for (std::uint8_t& byte : uuid.bytes) {
            byte = static_cast<std::uint8_t>(below(256));
        }
        return uuid;
    }

    /// Up to 11 pieces, chosen for what they do to JSON and to UTF-8.
    std::string text() {
        static const std::array<std::string, 16> pieces = {
            "a",      "Micro ",     " ",       "\"",
            "\\",     "/",          "\n",      "\x01",
            "\x7F",   "é",          "\u2028",  "\uFFFF",
            "\uD7FF", "\U0001F3A4", "\\u0041", std::string(1, '\0')};
        std::string text;
        for (std::size_t count = below(12); count > 0; --count) {
            text += pieces[below(pieces.size())];
        }
        return text;
    }

    /// Any signed 64-bit integer, the ends of the range and small ones more often.
    std::int64_t integer() {
        switch (below(4)) {
            case 0:
                return INT64_MIN + static_cast<std::int64_t>(below(2));
            case 1:
                return INT64_MAX - static_cast<std::int64_t>(below(2));
            case 2:
                return static_cast<std::int64_t>(below(2000)) - 1000;
            default:
                return static_cast<std::int64_t>(next());
        }
    }

    Guest guest() {
        Guest guest{uuid(), text(), text(), text(), std::nullopt};
        if (below(2) == 0) {
            guest.volume = text();
        }
        return guest;
    }

    Song song() {
        Song song{uuid(), text(), listOf(&RandomRecords::guest), std::nullopt, std::nullopt};
        if (below(2) == 0) {
            song.ltcTimecode = text();
        }
        if (below(2) == 0) {
            song.duration = integer();
        }
        return song;
    }

    Show show() {
        return {uuid(), text(), listOf(&RandomRecords::text), listOf(&RandomRecords::text),
                listOf(&RandomRecords::song)};
    }

    PersistedData persistedData() {
        PersistedData data{listOf(&RandomRecords::show), std::nullopt, integer()};
        if (below(2) == 0) {
            data.activeShowId = uuid();
        }
        return data;
    }

private:
    template <typename T>
    std::vector<T> listOf(T (RandomRecords::*make)()) {
        std::vector<T> list;
        for (std::size_t count = below(5); count > 0; --count) {
            list.push_back((this->*make)());
        }
        return list;
    }
};

}  // namespace tessivo::test
