#include "sync/LiveState.h"

#include "model/ShowMembers.h"

#include <algorithm>

namespace tessivo {
namespace {

/// How many commas and opened brackets a state may have: as many as 20 MB of songs. Labels could be
/// millions more in as many bytes, and would hold a station for seconds and take it hundreds of
/// megabytes to read; counting them takes milliseconds.
constexpr std::ptrdiff_t mostMarks = 2'000'000;

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
