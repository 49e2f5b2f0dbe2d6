#include "timecode/AuhalCapture.h"

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

std::string sentenceFor(const AudioFailure& failure) {
    const auto sentence = [&](const char* beginning) {
        return beginning + (" (status " + std::to_string(failure.status)) + ").";
    };
    switch (failure.step) {
        case AudioStep::findSystem:
            return "Impossible de trouver le composant AUHAL.";
        case AudioStep::createUnit:
            return sentence("Échec de création de l'AUHAL");
        case AudioStep::enableInput:
            return sentence("Échec activation entrée");
        case AudioStep::disableOutput:
            return sentence("Échec désactivation sortie");
        case AudioStep::selectDevice:
            return sentence("Échec assignation du périphérique");
        case AudioStep::readFormat:
            return sentence("Échec lecture du format");
        case AudioStep::setFormat:
            return sentence("Échec configuration format client");
        case AudioStep::setCallback:
            return sentence("Échec configuration du callback");
        case AudioStep::initialize:
            return sentence("Échec AudioUnitInitialize");
        case AudioStep::start:
            break;
    }
    return sentence("Échec démarrage AUHAL");
}

}  // namespace

AuhalCapture::AuhalCapture(MainQueue& mainQueue, AudioInputSystem& system)
    : mainQueue_(mainQueue), system_(system), reopening_(mainQueue) {}

void AuhalCapture::start(AudioDeviceId device) {
    stop();
    device_ = device;
    wasOpen_ = false;
    open();
}

void AuhalCapture::startAgain(std::string name) {
    stop();
    device_.reset();
    name_ = std::move(name);
    wasOpen_ = true;
    find();
}

void AuhalCapture::stop() {
    stream_.reset();
    looks_.reset();
    reopening_.callOff();
    started_.callOff();
    isLost_ = false;
}

void AuhalCapture::open() {
    if (!device_) {
        find();
        return;
    }
    stream_.reset();
    stream_ = system_.capture(
        *device_, {.onStart =
                       [this](const AudioStreamFormat& format) {
                           if (format.channelsPerFrame == 0) {
                               end("Le périphérique signale 0 canal.");
                           } else {
                               noteOpen();
                           }
                       },
                   .onBlock =
                       [this](const AudioBlock& block) {
                           // Whoever hears that the sound is back may stop the capture.
                           auto handOver = started_.guard([&] { onSamples(block); });
                           noteSound();
                           handOver();
                       },
                   .onEnd = [this](const AudioFailure& failure) { end(sentenceFor(failure)); }});
}

void AuhalCapture::find() {
    system_.fetchDevices(
        started_.guard([this](std::optional<std::vector<AudioInputDevice>> devices) {
            if (!devices) {
                lose();
                return;
            }
            const auto listed = std::ranges::find(*devices, name_, &AudioInputDevice::name);
            device_ = listed != devices->end() ? std::optional(listed->id) : std::nullopt;
            if (device_) {
                open();
            } else {
                lose();
            }
            onListed(*std::move(devices), device_);
        }));
}

void AuhalCapture::noteOpen() {
    wasOpen_ = true;
    silentLooks_ = looksUntilDead - looksBeforeFirstBlock;
    looks_ = mainQueue_.repeatEvery(lookSeconds, [this] { countSilence(); });
}

void AuhalCapture::noteSound() {
    silentLooks_ = 0;
    if (std::exchange(isLost_, false)) {
        onBack();
    }
}

void AuhalCapture::countSilence() {
    if (++silentLooks_ >= looksUntilDead) {
        lose();
    }
}

void AuhalCapture::end(const std::string& why) {
    if (wasOpen_) {
        lose();
    } else {
        stop();
        onRefused(why);
    }
}

// The sound may be gone for a moment or for the evening: whatever ails the device, the way back is
// to open it anew.
void AuhalCapture::lose() {
    stream_.reset();
    looks_.reset();
    reopening_.postAfter(reopenSeconds, [this] { open(); });
    if (!std::exchange(isLost_, true)) {
        onLost();
    }
}

}  // namespace tessivo
