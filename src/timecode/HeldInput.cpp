#include "timecode/HeldInput.h"

#include <algorithm>
#include <utility>

namespace tessivo {
namespace {

/// An open input is looked at this often, in seconds, and is dead when no block has come from one
/// look to the next so many times. Looks are counted, not seconds: after the main thread stood
/// still, the blocks that wait come before the next look. The first block of a server's idle output
/// takes two seconds.
constexpr double lookSeconds = 0.25;
constexpr int looksUntilDead = 5;
constexpr int looksBeforeFirstBlock = 12;
constexpr double reopenSeconds = 1.0;

}  // namespace

HeldInput::HeldInput(MainQueue& mainQueue, AudioInputSystem& audio)
    : mainQueue_(mainQueue), audio_(audio), capture_(audio), reopening_(mainQueue) {
    capture_.onStart = [this] {
        wasOpen_ = true;
        silentLooks_ = looksUntilDead - looksBeforeFirstBlock;
        looks_ = mainQueue_.repeatEvery(lookSeconds, [this] { countSilence(); });
    };
    capture_.onSamples = [this](const AudioBlock& block) {
        // Whoever hears that the sound is back may close the input.
        auto handOver = held_.guard([&] { onBlock(block); });
        noteSound();
        handOver();
    };
    capture_.onEnd = [this](const std::string& why) { end(why); };
}

void HeldInput::open(AudioDeviceId device) {
    close();
    device_ = device;
    wasOpen_ = false;
    begin();
}

void HeldInput::openAgain(std::string name) {
    close();
    device_.reset();
    name_ = std::move(name);
    wasOpen_ = true;
    begin();
}

void HeldInput::close() {
    capture_.stop();
    looks_.reset();
    reopening_.callOff();
    held_.callOff();
    isLost_ = false;
}

void HeldInput::begin() {
    if (device_) {
        capture_.start(*device_);
    } else {
        find();
    }
}

void HeldInput::find() {
    audio_.fetchDevices(held_.guard([this](std::optional<std::vector<AudioInputDevice>> devices) {
        if (!devices) {
            lose();
            return;
        }
        const auto listed = std::ranges::find(*devices, name_, &AudioInputDevice::name);
        device_ = listed != devices->end() ? std::optional(listed->id) : std::nullopt;
        if (device_) {
            begin();
        } else {
            lose();
        }
        onListed(*std::move(devices), device_);
    }));
}

void HeldInput::noteSound() {
    silentLooks_ = 0;
    if (std::exchange(isLost_, false)) {
        onBack();
    }
}

void HeldInput::countSilence() {
    if (++silentLooks_ >= looksUntilDead) {
        lose();
    }
}

void HeldInput::end(const std::string& why) {
    if (wasOpen_) {
        lose();
    } else {
        onRefused(why);
    }
}

// The sound may be gone for a moment or for the evening: whatever ails the device, the way back is
// to open it anew.
void HeldInput::lose() {
    capture_.stop();
    looks_.reset();
    reopening_.postAfter(reopenSeconds, [this] { begin(); });
    if (!std::exchange(isLost_, true)) {
        onLost();
    }
}

}  // namespace tessivo
