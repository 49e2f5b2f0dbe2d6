#include "import/Doubts.h"

#include "base/Text.h"
#include "import/RunSheetText.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace tessivo {
namespace {

constexpr std::int64_t shortestSong = 20, longestSong = 1200;  // seconds
/// In bytes; a million rows may share the longest text that there is.
constexpr std::size_t longestOddTitle = 64;

bool isNumber(std::string_view text) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

/// Three numbers between slashes, hyphens or dots, of which one end is a year.
bool isDate(std::string_view text) {
    const std::vector<std::string_view> fields = split(text, "/-.");
    return fields.size() == 3 && integersBetween(text, "/-.").size() == 3 &&
           (fields.front().size() == 4 || fields.back().size() == 4);
}

/// Rows between songs, as crews name them: the whole title, but for a number after it.
bool namesNoSong(std::string_view title) {
    constexpr std::string_view names[] = {"entracte",
                                          "pause",
                                          "set",
                                          "partie",
                                          "acte",
                                          "total",
                                          "durée totale",
                                          "fin",
                                          "rappel",
                                          "rappels",
                                          "changement plateau",
                                          "intermission"};
    std::string name;
    for (const char c : title) {
        name += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    }
    name.resize(std::min(name.find_first_of("0123456789:"), name.size()));
    const std::string_view bare = trimSpaces(name);
    return std::ranges::find(names, bare) != std::end(names);
}

bool areOutOfRange(std::span<const std::int64_t> fields, std::span<const std::int64_t> limits) {
    for (std::size_t i = 0; i < std::min(fields.size(), limits.size()); ++i) {
        if (fields[i] < 0 || fields[i] >= limits[i]) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::string_view textOf(Doubt doubt) {
    switch (doubt) {
        case Doubt::negativeDuration:
            return "durée négative";
        case Doubt::shortDuration:
            return "moins de 20 s";
        case Doubt::longDuration:
            return "plus de 20 minutes";
        case Doubt::durationOutOfRange:
            return "60 ou plus dans un champ de la durée";
        case Doubt::timecodeOutOfRange:
            return "timecode qu'aucune entrée n'envoie";
        case Doubt::sameTimecode:
            return "même timecode qu'un morceau plus haut";
        case Doubt::earlierTimecode:
            return "timecode avant celui du morceau précédent";
        case Doubt::numberAsTitle:
            return "le titre est un nombre";
        case Doubt::dateAsTitle:
            return "le titre est une date";
        case Doubt::errorAsTitle:
            return "le titre est une erreur du tableur";
        case Doubt::unresolvedTitle:
            return "formule sans résultat : pas de morceau";
        case Doubt::notASong:
            return "pas un morceau ?";
        case Doubt::mergedGuests:
            return "guests fusionnés : seul ce morceau les reçoit";
        case Doubt::hiddenRow:
            return "ligne masquée dans le tableur";
        case Doubt::hiddenColumn:
            return "colonne masquée dans le tableur";
        case Doubt::cutText:
            return "texte coupé après 32 767 caractères";
    }
    return {};
}

std::optional<Doubt> doubtAboutDuration(std::string_view text, std::int64_t seconds) {
    constexpr std::int64_t noLimit = INT64_MAX;
    constexpr std::int64_t hoursFirst[] = {noLimit, 60, 60}, minutesFirst[] = {noLimit, 60};
    const std::string_view line = firstLine(text);
    if (seconds < 0) {
        return Doubt::negativeDuration;
    }
    if (areOutOfRange(integersBetween(line, ":"), hoursFirst) ||
        areOutOfRange(integersBetween(line, "'"), minutesFirst)) {
        return Doubt::durationOutOfRange;
    }
    return seconds < shortestSong  ? std::optional(Doubt::shortDuration)
           : seconds > longestSong ? std::optional(Doubt::longDuration)
                                   : std::nullopt;
}

std::optional<Doubt> doubtAboutTimecode(std::string_view timecode) {
    constexpr std::int64_t limits[] = {24, 60, 60, 30};
    return areOutOfRange(integersBetween(timecode, ":"), limits)
               ? std::optional(Doubt::timecodeOutOfRange)
               : std::nullopt;
}

std::optional<Doubt> doubtAboutTitle(std::string_view title) {
    if (title.size() > longestOddTitle) {
        return std::nullopt;
    }
    if (isNumber(title)) {
        return Doubt::numberAsTitle;
    }
    if (isDate(title)) {
        return Doubt::dateAsTitle;
    }
    if (title.starts_with('#') &&
        (title.ends_with('!') || title.ends_with('?') || title == "#N/A")) {
        return Doubt::errorAsTitle;
    }
    return namesNoSong(title) ? std::optional(Doubt::notASong) : std::nullopt;
}

}  // namespace tessivo
