#include "sync/LiveState.h"

#include "model/ShowMembers.h"

#include <algorithm>

namespace tessivo {
namespace {

/// How many commas and opened brackets a state may have. One with a thousand songs has some twenty
/// thousand; a liar's millions would take a station half a second and hundreds of megabytes to
/// read, and counting them takes milliseconds.
constexpr std::ptrdiff_t mostMarks = 100'000;

bool isBelievable(std::string_view json) {
    return std::ranges::count_if(json, [](char c) { return c == ',' || c == '[' || c == '{'; }) <=
           mostMarks;
}

}  // namespace

template <JsonRecord<LiveState> Record, typename Visit>
bool visitMembers(Record& state, Visit visit) {
    return visit("show", state.show) && visit("activeSongIndex", state.activeSongIndex) &&
           visit("currentSongStartedAt", state.currentSongStartedAt.secondsSince2001);
}

std::string encodeJson(const LiveState& state) {
    return json::encode(state);
}

std::optional<LiveState> decodeLiveState(std::string_view json) {
    return isBelievable(json) ? json::decode<LiveState>(json) : std::nullopt;
}

}  // namespace tessivo
