#include "sync/LiveState.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// Any bytes as a message: what can be read as a state is written, and reads back as the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto state =
        tessivo::decodeLiveState(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!state) {
        return 0;
    }
    const std::string json = tessivo::encodeJson(*state);
    const auto back = tessivo::decodeLiveState(json);
    if (!back || back->show != state->show || back->activeSongIndex != state->activeSongIndex ||
        back->currentSongStartedAt != state->currentSongStartedAt ||
        tessivo::encodeJson(*back) != json) {
        std::abort();
    }
    return 0;
}
