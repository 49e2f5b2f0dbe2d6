#include "live/RunSheet.h"

#include "live/Setlist.h"
#include "live/ShowClock.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace tessivo {
namespace {

/// Whether a spreadsheet might compute this text. A level such as -3 dB stays as it is: behind its
/// sign come a digit and nothing that computes.
bool mayBeFormula(std::string_view text) {
    if (text.empty() ||
        std::string_view("=+-@\t\r\n").find(text.front()) == std::string_view::npos) {
        return false;
    }
    const bool isLevel =
        (text.front() == '+' || text.front() == '-') && text.size() > 1 && text[1] >= '0' &&
        text[1] <= '9' && std::ranges::all_of(text.substr(1), [](char character) {
            return (character >= '0' && character <= '9') || character == '.' || character == ',' ||
                   character == ' ' || (character >= 'a' && character <= 'z') ||
                   (character >= 'A' && character <= 'Z');
        });
    return !isLevel;
}

std::string cell(std::string_view text) {
    std::string quoted = "\"";
    if (mayBeFormula(text)) {
        quoted += '\'';
    }
    for (const char character : text) {
        quoted.append(character == '"' ? 2 : 1, character);
    }
    return quoted + '"';
}

void appendLine(std::string& csv, std::initializer_list<std::string_view> cells) {
    for (const std::string_view text : cells) {
        csv += cell(text) + ';';
    }
    csv.back() = '\r';
    csv += '\n';
}

}  // namespace

RunSheet runSheet(const Show& show, std::optional<std::int64_t> plannedStart) {
    RunSheet sheet;
    sheet.rows.reserve(show.songs.size());
    for (const Song& song : show.songs) {
        const auto timeNow = [&]() -> std::optional<SheetTime> {
            return plannedStart ? std::optional(SheetTime{*plannedStart + sheet.knownLength,
                                                          sheet.songsWithoutLength > 0})
                                : std::nullopt;
        };
        RunSheetRow row{.number = sheet.rows.size() + 1,
                        .title = song.title,
                        .timecode = song.ltcTimecode.value_or(std::string()),
                        .start = timeNow(),
                        .length = knownLength(song),
                        .end = std::nullopt,
                        .guests = song.guests};
        if (row.length) {
            sheet.knownLength += *row.length;
            row.end = timeNow();
        } else {
            ++sheet.songsWithoutLength;
        }
        sheet.rows.push_back(std::move(row));
    }
    return sheet;
}

std::string sheetTimeText(const std::optional<SheetTime>& time) {
    return time ? (time->isEarliest ? "≥ " : "") + timeOfDayText(time->seconds) : std::string();
}

std::string hoursMinutesAndSeconds(std::int64_t seconds) {
    char text[40];
    std::snprintf(text, sizeof text, "%" PRId64 ":%02" PRId64 ":%02" PRId64, seconds / 3600,
                  seconds / 60 % 60, seconds % 60);
    return text;
}

std::string runSheetCsv(const RunSheet& sheet) {
    std::string csv = "\uFEFF";
    appendLine(csv, {"N°", "Titre", "Timecode", "Début", "Durée", "Fin", "Guest", "Micro", "IEM",
                     "Volume"});
    const std::vector<Guest> nobody(1);
    for (const RunSheetRow& row : sheet.rows) {
        const std::string number = std::to_string(row.number);
        bool isFirst = true;
        for (const Guest& guest : row.guests.empty() ? nobody : row.guests) {
            appendLine(csv,
                       {number, row.title, row.timecode, isFirst ? sheetTimeText(row.start) : "",
                        isFirst && row.length ? hoursMinutesAndSeconds(*row.length) : "",
                        isFirst ? sheetTimeText(row.end) : "", guest.name, guest.mic, guest.iem,
                        shownVolume(guest)});
            isFirst = false;
        }
    }
    return csv;
}

}  // namespace tessivo
