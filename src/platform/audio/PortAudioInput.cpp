#include "platform/audio/PortAudioInput.h"

#include "platform/audio/PortAudioSession.h"
#include "platform/audio/PortAudioUnit.h"

#include <portaudio.h>

#include <algorithm>

namespace tessivo {

PortAudioInput::PortAudioInput(std::string lister) : lister_(std::move(lister)) {}

PortAudioInput::~PortAudioInput() = default;

bool PortAudioInput::findInputComponent() {
    prepared_ = std::make_unique<PortAudioSession>();
    if (prepared_->status() != audioSuccess || Pa_GetHostApiCount() <= 0) {
        prepared_.reset();
    }
    return prepared_ != nullptr;
}

AudioStatus PortAudioInput::createUnit(std::unique_ptr<AudioInputUnit>& unit) {
    auto session = prepared_ ? std::move(prepared_) : std::make_unique<PortAudioSession>();
    if (const AudioStatus status = session->status(); status != audioSuccess) {
        return status;
    }
    unit = std::make_unique<PortAudioUnit>(*this, std::move(session));
    return audioSuccess;
}

std::vector<AudioDeviceId> PortAudioInput::deviceIds() {
    if (const auto listed = look()) {
        std::vector<PresentDevice> found;
        for (const ListedInputDevice& device : *listed) {
            found.push_back({idOf(device.key), device.channels});
        }
        keepCaptured(found);
        present_ = std::move(found);
    }
    std::vector<AudioDeviceId> ids;
    for (const PresentDevice& device : present_) {
        ids.push_back(device.id);
    }
    return ids;
}

std::optional<std::uint32_t> PortAudioInput::inputConfigurationSize(AudioDeviceId device) {
    const PresentDevice* found = present(device);
    return found != nullptr ? std::optional(found->channels * std::uint32_t{sizeof(float)})
                            : std::nullopt;
}

std::optional<std::string> PortAudioInput::deviceName(AudioDeviceId device) {
    const auto key = keyOf(device);
    return key ? std::optional(key->name) : std::nullopt;
}

// Without the lister this process looks for itself, which tells nothing new while it captures.
std::optional<InputDeviceList> PortAudioInput::look() const {
    if (auto listed = listInputDevicesInChild(lister_)) {
        return listed;
    }
    const PortAudioSession session;
    if (unit_ != nullptr || session.status() != audioSuccess) {
        return std::nullopt;
    }
    return listInputDevices();
}

AudioDeviceId PortAudioInput::idOf(const InputDeviceKey& key) {
    const auto found = std::find(seen_.begin(), seen_.end(), key);
    const auto place = static_cast<AudioDeviceId>(found - seen_.begin());
    if (found == seen_.end()) {
        seen_.push_back(key);
    }
    return place + 1;
}

std::optional<InputDeviceKey> PortAudioInput::keyOf(AudioDeviceId device) const {
    return device >= 1 && device <= seen_.size() ? std::optional(seen_[device - 1]) : std::nullopt;
}

const PortAudioInput::PresentDevice* PortAudioInput::present(AudioDeviceId device) const {
    const auto found = std::find_if(present_.begin(), present_.end(),
                                    [&](const PresentDevice& other) { return other.id == device; });
    return found != present_.end() ? &*found : nullptr;
}

// A sound card that only one program can open doesn't open for the lister while we capture from
// it, and so is missing from its list; it keeps its place.
void PortAudioInput::keepCaptured(std::vector<PresentDevice>& found) const {
    const PresentDevice* captured =
        unit_ != nullptr && unit_->isDelivering() ? present(unit_->device()) : nullptr;
    if (captured == nullptr ||
        std::any_of(found.begin(), found.end(),
                    [&](const PresentDevice& device) { return device.id == captured->id; })) {
        return;
    }
    const auto place = std::min(captured - present_.data(), std::ptrdiff_t(found.size()));
    found.insert(found.begin() + place, *captured);
}

}  // namespace tessivo
