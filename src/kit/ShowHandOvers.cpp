#include "kit/ShowHandOvers.h"

namespace tessivo {

ShowHandOvers::ShowHandOvers(AppState& state)
    : before_(state.willChange.subscribe([this](AppState::Field field) { forget(field); })),
      after_(state.didChange.subscribe([this](AppState::Field field) { forget(field); })) {}

void ShowHandOvers::forget(AppState::Field field) {
    if (field == AppState::Field::shows) {
        show_ = nullptr;
    }
}

const HandOvers& ShowHandOvers::of(const Show& show) {
    if (show_ != &show) {
        handOvers_ = handOvers(show);
        show_ = &show;
    }
    return handOvers_;
}

}  // namespace tessivo
