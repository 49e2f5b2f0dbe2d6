#include "import/Notations.h"

#include "base/Text.h"
#include "import/RunSheetText.h"
#include "live/Setlist.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <system_error>
#include <vector>

namespace tessivo {
namespace {

/// In bytes; a million rows may share the longest text that there is.
constexpr std::size_t longestNotation = 64;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Takes the digits at the start of the text, four at most: more is no time that somebody plays.
std::optional<std::int64_t> takeNumber(std::string_view& text) {
    const auto end = std::ranges::find_if_not(text, isDigit);
    const auto length = static_cast<std::size_t>(end - text.begin());
    const auto number = length <= 4 ? readInteger(text.substr(0, length)) : std::nullopt;
    text.remove_prefix(number ? length : 0);
    return number;
}

/// The numbers of one or two digits that the whole text has between characters of `separators`.
std::vector<std::int64_t> fieldsOf(std::string_view text, std::string_view separators) {
    std::vector<std::int64_t> fields;
    for (;;) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        const std::string_view field = text.substr(0, end);
        if (field.empty() || field.size() > 2 || !std::ranges::all_of(field, isDigit)) {
            return {};
        }
        fields.push_back(*readInteger(field));
        if (end == text.size()) {
            return fields;
        }
        text.remove_prefix(end + 1);
    }
}

std::optional<Reading> lengthOf(Notation notation, std::int64_t seconds) {
    return Reading{notation, minutesAndSeconds(seconds), seconds};
}

std::optional<Reading> timecodeOf(Notation notation, const std::vector<std::int64_t>& fields) {
    constexpr std::int64_t limits[] = {24, 60, 60, 30};
    if (fields.size() != 4 || !std::ranges::equal(fields, limits, std::ranges::less{})) {
        return std::nullopt;
    }
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d:%02d", static_cast<int>(fields[0]),
                  static_cast<int>(fields[1]), static_cast<int>(fields[2]),
                  static_cast<int>(fields[3]));
    return Reading{notation, text};
}

struct Unit {
    std::string_view text;
    std::int64_t seconds;
    Notation notation;
};

/// A unit before those that it begins with.
constexpr Unit unitTexts[] = {{"heures", 3600, Notation::units}, {"heure", 3600, Notation::units},
                              {"h", 3600, Notation::units},      {"minutes", 60, Notation::units},
                              {"minute", 60, Notation::units},   {"min", 60, Notation::units},
                              {"mn", 60, Notation::units},       {"m", 60, Notation::units},
                              {"secondes", 1, Notation::units},  {"seconde", 1, Notation::units},
                              {"sec", 1, Notation::units},       {"s", 1, Notation::units},
                              {"''", 1, Notation::signs},        {"’’", 1, Notation::signs},
                              {"\"", 1, Notation::signs},        {"”", 1, Notation::signs},
                              {"″", 1, Notation::signs},         {"'", 60, Notation::signs},
                              {"’", 60, Notation::signs},        {"′", 60, Notation::signs}};

/// Numbers with units from the greater to the smaller; the last may go without one.
std::optional<Reading> inUnits(std::string_view line) {
    std::string lowered(line);
    std::ranges::transform(lowered, lowered.begin(), [](unsigned char c) {
        return c < 0x80 ? static_cast<char>(std::tolower(c)) : static_cast<char>(c);
    });
    std::string_view rest = lowered;
    std::int64_t seconds = 0, lastUnit = 0;
    Notation notation = Notation::signs;
    while (!rest.empty()) {
        const auto number = takeNumber(rest);
        rest = trimSpaces(rest);
        const auto* unit = std::ranges::find_if(
            unitTexts, [&](const Unit& candidate) { return rest.starts_with(candidate.text); });
        const bool hasUnit = unit != std::end(unitTexts);
        const std::int64_t length = hasUnit ? unit->seconds : rest.empty() ? lastUnit / 60 : 0;
        // Beside a greater unit, 60 or more of the smaller one are a slip of somebody's.
        if (!number || length == 0 ||
            (lastUnit != 0 && (length >= lastUnit || *number * length >= lastUnit))) {
            return std::nullopt;
        }
        seconds += *number * length;
        lastUnit = length;
        if (hasUnit) {
            notation = unit->notation == Notation::units ? Notation::units : notation;
            rest = trimSpaces(rest.substr(unit->text.size()));
        }
    }
    return lastUnit == 0 ? std::nullopt : lengthOf(notation, seconds);
}

/// The whole seconds of a time that a spreadsheet stored as part of a day; its digits are never
/// quite exact, but far more so than somebody would type.
std::optional<std::int64_t> secondsOfDay(std::string_view line) {
    double days = 0.0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), days);
    const double seconds = days * 86400.0;
    if (error != std::errc() || end != line.data() + line.size() || !(days > 0.0 && days < 1.0) ||
        std::abs(seconds - std::round(seconds)) > 0.01) {
        return std::nullopt;
    }
    const auto whole = static_cast<std::int64_t>(std::round(seconds));
    return whole > 0 && whole < 86400 ? std::optional(whole) : std::nullopt;
}

std::string_view withoutMark(std::string_view line) {
    for (const std::string_view mark : {"LTC", "ltc", "TC", "tc", "(TC)", "(LTC)"}) {
        if (line.starts_with(mark)) {
            line = trimSpaces(line.substr(mark.size()));
            return trimSpaces(line.substr(line.starts_with(':') ? 1 : 0));
        }
        if (line.ends_with(mark)) {
            const std::size_t bracket = line.find('(');
            return trimSpaces(line.substr(0, std::min(bracket, line.size() - mark.size())));
        }
    }
    return line;
}

}  // namespace

std::optional<Reading> likelyDuration(std::string_view text) {
    const std::string_view line = firstLine(text);
    if (line.size() > longestNotation) {
        return std::nullopt;
    }
    if (const std::size_t colon = line.find(':'); colon != std::string_view::npos) {
        std::string_view rest = line;
        const auto minutes = takeNumber(rest);
        const auto seconds = fieldsOf(line.substr(colon + 1), ":");
        const bool isRead = minutes && rest.starts_with(':') && line.size() - colon == 3 &&
                            seconds.size() == 1 && seconds[0] < 60;
        return isRead ? lengthOf(Notation::minutesAndSeconds, *minutes * 60 + seconds[0])
                      : std::nullopt;
    }
    if (const auto seconds = secondsOfDay(line)) {
        // From an hour on it may be minutes and seconds typed into cells for hours and minutes.
        return *seconds < 3600 ? lengthOf(Notation::lengthInDays, *seconds) : std::nullopt;
    }
    return inUnits(line);
}

std::optional<Reading> likelyTimecode(std::string_view text) {
    const std::string_view line = firstLine(text);
    if (line.size() > longestNotation) {
        return std::nullopt;
    }
    if (const auto seconds = secondsOfDay(line)) {
        return timecodeOf(Notation::timeOfDay,
                          {*seconds / 3600, *seconds / 60 % 60, *seconds % 60, 0});
    }
    const std::string_view bare = withoutMark(line);
    auto fields = fieldsOf(bare, ":;.");
    if (bare.size() != line.size()) {
        return timecodeOf(Notation::marked, fields);
    }
    if (fields.size() == 3 && fieldsOf(bare, ":").size() == 3) {
        fields.push_back(0);
        return timecodeOf(Notation::withoutFrames, fields);
    }
    return timecodeOf(Notation::frameSeparator, fields);
}

}  // namespace tessivo
