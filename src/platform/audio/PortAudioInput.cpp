#include "platform/audio/PortAudioInput.h"

#include "platform/audio/ChildCapture.h"

#include <algorithm>
#include <utility>

namespace tessivo {

void PortAudioInput::fetchDevices(DeviceAnswer answer) {
    lister_.run([this, answer = std::move(answer)](const std::optional<InputDeviceList>& listed) {
        answer(listed ? std::optional(devicesOf(*listed)) : std::nullopt);
    });
}

std::vector<AudioInputDevice> PortAudioInput::devicesOf(const InputDeviceList& listed) {
    std::vector<AudioDeviceId> found;
    for (const ListedInputDevice& device : listed) {
        found.push_back(idOf(device.key));
    }
    keepCaptured(found);
    present_ = std::move(found);
    std::vector<AudioInputDevice> devices;
    for (const AudioDeviceId id : present_) {
        devices.push_back({id, seen_[id - 1].name});
    }
    return devices;
}

// A sound card that only one program can open doesn't open for the lister while we capture from
// it, and so is missing from its list; it keeps its place.
void PortAudioInput::keepCaptured(std::vector<AudioDeviceId>& found) const {
    const auto capture = capture_.lock();
    const auto place = std::ranges::find(present_, captured_) - present_.begin();
    if (capture && capture->isOpen() && place < std::ssize(present_) &&
        std::ranges::find(found, captured_) == found.end()) {
        found.insert(found.begin() + std::min(place, std::ssize(found)), captured_);
    }
}

AudioDeviceId PortAudioInput::idOf(const InputDeviceKey& key) {
    const auto found = std::ranges::find(seen_, key);
    const auto place = static_cast<AudioDeviceId>(found - seen_.begin());
    if (found == seen_.end()) {
        seen_.push_back(key);
    }
    return place + 1;
}

std::shared_ptr<AudioInputStream> PortAudioInput::capture(AudioDeviceId device,
                                                          AudioInputHandlers handlers) {
    const bool isKnown = device >= 1 && device <= seen_.size();
    const auto capture =
        std::make_shared<ChildCapture>(program_, isKnown ? seen_[device - 1] : InputDeviceKey(),
                                       patience_, std::move(handlers), last_);
    captured_ = device;
    capture_ = capture;
    return capture;
}

}  // namespace tessivo
