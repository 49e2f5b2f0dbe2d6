#include "kit/SongInfo.h"

#include "kit/ShownText.h"
#include "live/Setlist.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <span>
#include <string_view>

namespace tessivo {
namespace {

/// Of one song: a message from the network may hold hundreds of thousands.
constexpr std::size_t guestsShown = 60;
/// In all names, microphones, mixes and notes of one song, each of which is laid out several times
/// until all have room. Sixty guests of 40 letters each have room in it.
constexpr qsizetype charactersOfGuests = 2400;
constexpr qsizetype symbolsOfGuests = 32;

using Texts = std::array<std::string_view, 4>;

Texts textsOf(const Guest& guest) {
    return {guest.name, guest.mic, guest.iem, shownVolume(guest)};
}

/// Whether a song is seen to keep within that without looking at each character.
bool isOrdinary(std::span<const Guest> guests) {
    qsizetype bytes = 0;
    for (const Guest& guest : guests) {
        for (const std::string_view text : textsOf(guest)) {
            bytes += static_cast<qsizetype>(text.size());
        }
    }
    // Those that may be symbols, from U+2000 on, begin with this byte of UTF-8 or a greater one.
    const auto mayBeginSymbol = [](char byte) { return static_cast<unsigned char>(byte) >= 0xE2; };
    return bytes <= charactersOfGuests && std::ranges::none_of(guests, [&](const Guest& guest) {
               return std::ranges::any_of(textsOf(guest), [&](std::string_view text) {
                   return std::ranges::any_of(text, mayBeginSymbol);
               });
           });
}

/// As much of each text as keeps the song within that: the longest are cut.
ShownPart partWithin(std::span<const Guest> guests) {
    ShownPart part;
    if (isOrdinary(guests)) {
        return part;
    }
    std::vector<QString> starts;
    for (const Guest& guest : guests) {
        for (const std::string_view text : textsOf(guest)) {
            starts.push_back(
                toQString(text.substr(0, 4 * static_cast<std::size_t>(part.characters))));
        }
    }
    // The symbols of what is left only: to count them takes longer than to measure texts.
    const auto sum = [&](auto countOf, qsizetype most) {
        return std::accumulate(starts.begin(), starts.end(), qsizetype{0},
                               [&](qsizetype all, const QString& start) {
                                   return all + std::min(countOf(start), most);
                               });
    };
    while (sum([](const QString& start) { return start.size(); }, part.characters) >
           charactersOfGuests) {
        --part.characters;
    }
    for (QString& start : starts) {
        start.truncate(part.characters);
    }
    while (sum(countSymbols, part.symbols) > symbolsOfGuests) {
        --part.symbols;
    }
    return part;
}

Guest cut(const Guest& guest, ShownPart part) {
    const auto cutText = [part](std::string_view text) {
        return toShownText(text, part).toStdString();
    };
    return {.id = guest.id,
            .name = cutText(guest.name),
            .mic = cutText(guest.mic),
            .iem = cutText(guest.iem),
            .volume = cutText(shownVolume(guest))};
}

}  // namespace

GuestInfo::GuestInfo(const Guest& guest)
    : name(toShownText(guest.name)),
      mic(toShownText(guest.mic)),
      iem(toShownText(guest.iem)),
      volume(toShownText(shownVolume(guest))),
      equipmentLine(toShownText(guestEquipmentLine(guest))),
      stageLine(toShownText(guestLine(guest, "—"))),
      operatorLine(toShownText(guestLine(guest, "(sans nom)"))) {}

SongInfo::SongInfo(const Song& song, int songPosition)
    : id(song.id),
      title(toShownText(song.title)),
      timecode(toShownText(song.ltcTimecode.value_or(std::string()))),
      position(songPosition) {
    const auto shown = std::span(song.guests).first(std::min(guestsShown, song.guests.size()));
    const ShownPart part = partWithin(shown);
    guests.reserve(shown.size());
    for (const Guest& guest : shown) {
        guests.push_back(part == ShownPart() ? GuestInfo(guest) : GuestInfo(cut(guest, part)));
    }
}

QVariantList SongInfo::guestList() const {
    QVariantList list;
    list.reserve(static_cast<qsizetype>(guests.size()));
    for (const GuestInfo& guest : guests) {
        list.append(QVariant::fromValue(guest));
    }
    return list;
}

}  // namespace tessivo
