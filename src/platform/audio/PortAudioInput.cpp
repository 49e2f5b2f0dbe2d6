#include "platform/audio/PortAudioInput.h"

#include "platform/audio/PortAudioSession.h"
#include "platform/audio/PortAudioStream.h"

#include <portaudio.h>

#include <algorithm>
#include <utility>

namespace tessivo {
namespace {

std::optional<InputDeviceList> listInThisProcess() {
    const PortAudioSession session;
    return session.status() == audioSuccess ? std::optional(listInputDevices()) : std::nullopt;
}

}  // namespace

void PortAudioInput::fetchDevices(DeviceAnswer answer) {
    lister_.run([this, answer = std::move(answer)](const InputDeviceLister::Result& result) {
        answer(devicesOf(result));
    });
}

std::optional<std::vector<AudioInputDevice>> PortAudioInput::devicesOf(
    const InputDeviceLister::Result& result) {
    std::optional<InputDeviceList> listed;
    if (const auto* found = std::get_if<InputDeviceList>(&result)) {
        listed = *found;
    } else if (std::get<InputDeviceLister::Failure>(result) ==
                   InputDeviceLister::Failure::notStarted &&
               open_.expired()) {
        listed = listInThisProcess();
    }
    if (!listed) {
        return std::nullopt;
    }
    std::vector<AudioDeviceId> found;
    for (const ListedInputDevice& device : *listed) {
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
    const auto stream = open_.lock();
    const auto place = std::ranges::find(present_, openDevice_) - present_.begin();
    if (stream && stream->isDelivering() && place < std::ssize(present_) &&
        std::ranges::find(found, openDevice_) == found.end()) {
        found.insert(found.begin() + std::min(place, std::ssize(found)), openDevice_);
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

AudioInputSystem::Opening PortAudioInput::open(AudioDeviceId device) {
    auto session = std::make_unique<PortAudioSession>();
    if (session->status() != audioSuccess) {
        return AudioFailure{AudioStep::createUnit, session->status()};
    }
    if (Pa_GetHostApiCount() <= 0) {
        return AudioFailure{AudioStep::findSystem};
    }
    const InputDeviceList present = listInputDevices();
    const auto found = std::ranges::find_if(present, [&](const ListedInputDevice& other) {
        return device >= 1 && device <= seen_.size() && other.key == seen_[device - 1];
    });
    if (found == present.end()) {
        return AudioFailure{AudioStep::selectDevice, paInvalidDevice};
    }
    const auto stream = std::make_shared<PortAudioStream>(std::move(session));
    if (const AudioStatus status = stream->open(found->index); status != audioSuccess) {
        return AudioFailure{AudioStep::readFormat, status};
    }
    open_ = stream;
    openDevice_ = device;
    return stream;
}

}  // namespace tessivo
