#include "sync/LiveState.h"

#include "model/ShowMembers.h"

namespace tessivo {

template <JsonRecord<LiveState> Record, typename Visit>
bool visitMembers(Record& state, Visit visit) {
    return visit("show", state.show) && visit("activeSongIndex", state.activeSongIndex) &&
           visit("currentSongStartedAt", state.currentSongStartedAt.secondsSince2001);
}

std::string encodeJson(const LiveState& state) {
    return json::encode(state);
}

std::optional<LiveState> decodeLiveState(std::string_view json) {
    return json::decode<LiveState>(json);
}

}  // namespace tessivo
