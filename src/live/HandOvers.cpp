#include "live/HandOvers.h"

#include "base/Text.h"
#include "live/ShowClock.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace tessivo {
namespace {

using enum HandOver::Kind;

/// The songs before a position, summed up.
struct Lengths {
    std::int64_t seconds = 0;
    std::size_t unknown = 0;
};

std::vector<Lengths> lengthsBefore(const std::vector<Song>& songs) {
    std::vector<Lengths> before{{}};
    before.reserve(songs.size() + 1);
    for (const Song& song : songs) {
        const auto length = knownLength(song);
        before.push_back(
            {before.back().seconds + length.value_or(0), before.back().unknown + (length ? 0 : 1)});
    }
    return before;
}

std::string nameOf(const Guest& guest) {
    const std::string_view name = trimSpacesAndLineBreaks(guest.name);
    return std::string(name.empty() ? "(sans nom)" : name);
}

/// Follows one list of equipment through the songs.
class Ledger {
public:
    Ledger(Equipment::Kind kind, const std::vector<std::string>& listed, std::string Guest::*label)
        : kind_(kind), label_(label) {
        for (const std::string& text : listed) {
            positionOf(trimSpacesAndLineBreaks(text), true);
        }
    }

    /// Appends what the song at `index` uses, in the order of this ledger's equipment, which will
    /// stand behind what `all` has.
    void follow(const Song& song, std::size_t index, const std::vector<Lengths>& before,
                HandOvers& all) {
        std::map<std::size_t, std::vector<std::string>> takers;
        for (const Guest& guest : song.guests) {
            if (const auto position = positionOf(trimSpacesAndLineBreaks(guest.*label_), false)) {
                takers[*position].push_back(nameOf(guest));
            }
        }
        for (auto& [position, names] : takers) {
            std::optional<Use>& last = last_[position];
            HandOver use;
            use.equipment = all.equipment.size() + position;
            use.to = std::move(names);
            if (last) {
                use.from = last->names;
                use.songsBetween = index - last->song - 1;
                use.secondsBetween = before[index].seconds - before[last->song + 1].seconds;
                use.areLengthsBetweenKnown =
                    before[index].unknown == before[last->song + 1].unknown;
            }
            use.kind = kindOf(use);
            last = Use{index, use.to};
            all.songs[index].push_back(std::move(use));
        }
    }

    const std::vector<Equipment>& equipment() const { return equipment_; }

private:
    struct Use {
        std::size_t song = 0;
        std::vector<std::string> names;
    };

    static HandOver::Kind kindOf(const HandOver& use) {
        if (use.to.size() > 1) {
            return collision;
        }
        if (use.from.empty()) {
            return first;
        }
        return use.from == use.to ? kept : use.songsBetween == 0 ? tight : passage;
    }

    /// Makes room for a label that is seen for the first time; none for an empty one.
    std::optional<std::size_t> positionOf(std::string_view label, bool isListed) {
        if (label.empty()) {
            return std::nullopt;
        }
        const auto [found, isNew] = positions_.try_emplace(std::string(label), equipment_.size());
        if (isNew) {
            equipment_.push_back({kind_, std::string(label), isListed});
            last_.emplace_back();
        }
        return found->second;
    }

    Equipment::Kind kind_;
    std::string Guest::*label_;
    std::vector<Equipment> equipment_;
    std::vector<std::optional<Use>> last_;  // beside equipment_
    std::map<std::string, std::size_t> positions_;
};

std::string labelText(const Equipment& equipment) {
    return equipment.kind == Equipment::Kind::iem ? "IEM " + equipment.label : equipment.label;
}

std::string betweenText(const HandOver& use) {
    std::string text =
        std::to_string(use.songsBetween) + (use.songsBetween == 1 ? " morceau" : " morceaux");
    if (use.secondsBetween > 0) {
        const std::int64_t minutes = std::max<std::int64_t>((use.secondsBetween + 30) / 60, 1);
        text += use.areLengthsBetweenKnown ? ", " : ", au moins ";
        text += std::to_string(minutes) + " min";
    }
    return text;
}

std::string whatHappens(const HandOver& use) {
    std::string text = namesText(use.to);
    if (use.kind == passage || use.kind == tight) {
        text.insert(0, namesText(use.from) + " → ");
    }
    text.append(", ").append(use.kind == kept ? "gardé" : handOverWord(use.kind));
    return use.kind == passage ? text + " (" + betweenText(use) + ")" : text;
}

}  // namespace

HandOvers handOvers(const Show& show) {
    const std::vector<Lengths> before = lengthsBefore(show.songs);
    HandOvers all;
    all.songs.resize(show.songs.size());
    for (Ledger ledger : {Ledger(Equipment::Kind::microphone, show.mics, &Guest::mic),
                          Ledger(Equipment::Kind::iem, show.iems, &Guest::iem)}) {
        for (std::size_t i = 0; i < show.songs.size(); ++i) {
            ledger.follow(show.songs[i], i, before, all);
        }
        std::ranges::copy(ledger.equipment(), std::back_inserter(all.equipment));
    }
    return all;
}

std::string namesText(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += i == 0 ? "" : i + 1 == names.size() ? " et " : ", ";
        text += names[i];
    }
    return text;
}

std::string_view handOverWord(HandOver::Kind kind) {
    switch (kind) {
        case kept:
            return "";
        case first:
            return "premier";
        case passage:
            return "passage";
        case tight:
            return "serré";
        case collision:
            return "collision";
    }
    return "";
}

std::string handOverText(const HandOvers& all, const HandOver& one) {
    const Equipment& equipment = all.equipment[one.equipment];
    return labelText(equipment) + (equipment.isListed ? "" : " (hors liste)") +
           "\u00A0: " + whatHappens(one);
}

std::string handOversText(const HandOvers& all, std::int64_t songIndex) {
    if (songIndex < 0 || songIndex >= std::ssize(all.songs)) {
        return {};
    }
    std::vector<HandOver> changes = all.songs[static_cast<std::size_t>(songIndex)];
    std::erase_if(changes, [](const HandOver& use) { return use.kind == kept; });
    std::ranges::stable_sort(changes, std::ranges::greater{}, &HandOver::kind);
    std::string text;
    for (const HandOver& change : changes) {
        text += (text.empty() ? "" : "   ·   ") + handOverText(all, change);
    }
    return text;
}

EquipmentFaults equipmentFaults(const HandOvers& all, std::size_t song) {
    EquipmentFaults faults;
    std::string unlisted;
    for (const HandOver& use : all.songs[song]) {
        const Equipment& equipment = all.equipment[use.equipment];
        if (use.kind == collision) {
            faults.isCollision = true;
            faults.lines.push_back(handOverText(all, use));
        }
        if (!equipment.isListed) {
            unlisted += (unlisted.empty() ? "Hors liste\u00A0: " : ", ") + labelText(equipment);
        }
    }
    if (!unlisted.empty()) {
        faults.lines.push_back(std::move(unlisted));
    }
    return faults;
}

}  // namespace tessivo
