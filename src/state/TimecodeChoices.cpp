#include "state/TimecodeChoices.h"

#include "base/Text.h"
#include "state/Choices.h"
#include "timecode/LtcManager.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace tessivo {
namespace {

constexpr char carefulKey[] = "ltc_careful_v1";
constexpr char countsThirtyKey[] = "ltc_counts_30_v1";
/// A line for each device: the channel from 0, a blank, the device's name. The names can't be keys,
/// which become names of files.
constexpr char channelsKey[] = "ltc_channels_v1";
constexpr char on[] = "on";
constexpr char off[] = "off";

/// What `text` has about a device.
struct ChannelLine {
    std::size_t start = 0;  ///< of the line
    std::size_t end = 0;    ///< behind its line break
    std::optional<std::int64_t> channel;
};

ChannelLine lineOf(std::string_view text, std::string_view device) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size() - 1) + 1;
        const std::string_view line = text.substr(start, end - start - 1);
        const std::size_t blank = line.find(' ');
        if (blank != line.npos && line.substr(blank + 1) == device) {
            return {start, end, readInteger(line.substr(0, blank))};
        }
        start = end;
    }
    return {text.size(), text.size(), std::nullopt};
}

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
        } else if (field == LtcManager::Field::selectedDeviceId) {
            restoreChannel();
        } else if (field == LtcManager::Field::selectedChannelIndex) {
            keepChannel();
        }
    });
}

std::string TimecodeChoices::deviceName() const {
    for (const AudioInputDevice& device : manager_.availableInputDevices()) {
        if (device.id == manager_.selectedDeviceId()) {
            return device.name;
        }
    }
    return {};
}

void TimecodeChoices::restoreChannel() {
    const std::string text = choices_.get(channelsKey).value_or("");
    const std::int64_t channel = lineOf(text, deviceName()).channel.value_or(0);
    if (channel != manager_.selectedChannelIndex()) {
        manager_.setSelectedChannelIndex(channel);
    }
}

void TimecodeChoices::keepChannel() {
    const std::string device = deviceName();
    if (device.empty() || device.find('\n') != std::string::npos) {
        return;
    }
    std::string text = choices_.get(channelsKey).value_or("");
    const ChannelLine line = lineOf(text, device);
    text.replace(line.start, line.end - line.start,
                 std::to_string(manager_.selectedChannelIndex()) + ' ' + device + '\n');
    choices_.set(channelsKey, std::move(text));
}

}  // namespace tessivo
