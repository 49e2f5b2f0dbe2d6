#include "state/TimecodeChoices.h"

#include "state/Choices.h"
#include "timecode/LtcManager.h"

namespace tessivo {
namespace {

constexpr char carefulKey[] = "ltc_careful_v1";
constexpr char countsThirtyKey[] = "ltc_counts_30_v1";
constexpr char on[] = "on";
constexpr char off[] = "off";

}  // namespace

TimecodeChoices::TimecodeChoices(Choices& choices, LtcManager& manager)
    : choices_(choices), manager_(manager) {
    manager_.setCareful(choices_.get(carefulKey) == on);
    manager_.setCountsThirty(choices_.get(countsThirtyKey) == on);
    subscription_ = manager_.didChange.subscribe([this](LtcManager::Field field) {
        if (field == LtcManager::Field::isCareful) {
            choices_.set(carefulKey, manager_.isCareful() ? on : off);
        } else if (field == LtcManager::Field::countsThirty) {
            choices_.set(countsThirtyKey, manager_.countsThirty() ? on : off);
        }
    });
}

}  // namespace tessivo
