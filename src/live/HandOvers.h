#pragma once

#include "model/Show.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

/// A microphone or IEM mix of a show, by its label without the blanks around it.
struct Equipment {
    enum class Kind { microphone, iem };

    Kind kind = Kind::microphone;
    std::string label;
    bool isListed = true;  ///< false for one that guests use without the show's list having it

    friend bool operator==(const Equipment&, const Equipment&) = default;
};

/// What becomes of one microphone or mix in one song.
struct HandOver {
    /// By what the crew has to do: nothing, then ever more.
    enum class Kind {
        kept,       ///< the same people have it as the last time
        first,      ///< nobody had it before
        passage,    ///< it changes hands, with a song or more in between
        tight,      ///< it changes hands from one song to the next
        collision,  ///< this song gives it to two guests or more
    };

    Kind kind = Kind::first;
    std::size_t equipment = 0;           ///< position in `HandOvers::equipment`
    std::vector<std::string> from;       ///< who had it last, by name; none the first time
    std::vector<std::string> to;         ///< who takes it, in the order of the song's guests
    std::size_t songsBetween = 0;        ///< since it was used last
    std::int64_t secondsBetween = 0;     ///< the known lengths of those songs
    bool areLengthsBetweenKnown = true;  ///< all of them

    friend bool operator==(const HandOver&, const HandOver&) = default;
};

/// Where each microphone and each mix of a show goes, song by song.
struct HandOvers {
    /// Microphones before mixes; of each, the show's list in its order, then what else is used.
    std::vector<Equipment> equipment;
    /// For each song what it uses, in the order of `equipment`.
    std::vector<std::vector<HandOver>> songs;

    friend bool operator==(const HandOvers&, const HandOvers&) = default;
};

/// Labels and names compare as trimmed text. An empty label is no equipment, and who has no name is
/// "(sans nom)".
HandOvers handOvers(const Show& show);

/// French: Léa, Karim et Noé.
std::string namesText(const std::vector<std::string>& names);

/// What the crew has to do, in a French word; empty for nothing.
std::string_view handOverWord(HandOver::Kind kind);

/// French, one line: HF 2 : Léa → Karim, passage (3 morceaux, 12 min).
std::string handOverText(const HandOvers& all, const HandOver& one);

/// Every change of hands in a song on one line, the most pressing first; empty when there is none
/// and when there is no such song.
std::string handOversText(const HandOvers& all, std::int64_t songIndex);

/// What is wrong with the equipment of a song, in words.
struct EquipmentFaults {
    bool isCollision = false;        ///< else labels are missing from the show's lists only
    std::vector<std::string> lines;  ///< French; none when nothing is wrong
};
EquipmentFaults equipmentFaults(const HandOvers& all, std::size_t song);

}  // namespace tessivo
