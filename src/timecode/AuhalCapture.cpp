#include "timecode/AuhalCapture.h"

namespace tessivo {

namespace {

constexpr std::uint32_t maximumFrames = AudioInputUnit::maximumFramesPerSlice;

// Given back for a slice that doesn't fit the render buffers.
constexpr AudioStatus sliceTooLong = -1;

std::string failureMessage(std::string_view prefix, AudioStatus status) {
    return std::string(prefix) + std::to_string(status) + ").";
}

// Nothing when the step succeeded.
std::optional<std::string> check(AudioStatus status, std::string_view prefix) {
    if (status == audioSuccess) {
        return std::nullopt;
    }
    return failureMessage(prefix, status);
}

AudioStatus auhalInputCallback(void* reference, std::uint32_t frames) {
    return static_cast<AuhalCapture*>(reference)->handleRender(frames);
}

}  // namespace

std::optional<std::string> AuhalCapture::start(AudioDeviceId device) {
    stop();
    if (Failure failure = openUnit(device)) {
        return failure;
    }
    if (Failure failure = agreeOnFormat()) {
        return failure;
    }
    return run();
}

AuhalCapture::Failure AuhalCapture::openUnit(AudioDeviceId device) {
    if (!system_.findInputComponent()) {
        return "Impossible de trouver le composant AUHAL.";
    }
    std::unique_ptr<AudioInputUnit> unit;
    const AudioStatus created = system_.createUnit(unit);
    if (created != audioSuccess || !unit) {
        return failureMessage("Échec de création de l'AUHAL (status ", created);
    }
    unit_ = std::move(unit);
    if (Failure failure = check(unit_->enableInput(), "Échec activation entrée (status ")) {
        return failure;
    }
    if (Failure failure = check(unit_->disableOutput(), "Échec désactivation sortie (status ")) {
        return failure;
    }
    return check(unit_->setCurrentDevice(device), "Échec assignation du périphérique (status ");
}

AuhalCapture::Failure AuhalCapture::agreeOnFormat() {
    if (Failure failure =
            check(unit_->readDeviceFormat(streamFormat_), "Échec lecture du format (status ")) {
        return failure;
    }
    const std::uint32_t channels = streamFormat_.channelsPerFrame;
    if (channels == 0) {
        return "Le périphérique signale 0 canal.";
    }
    if (Failure failure = check(unit_->setClientFormat(streamFormat_),
                                "Échec configuration format client (status ")) {
        return failure;
    }
    samples_.assign(std::size_t{channels} * maximumFrames, 0.0F);
    buffers_.resize(channels);
    for (std::size_t channel = 0; channel < channels; ++channel) {
        buffers_[channel] = {samples_.data() + channel * maximumFrames,
                             maximumFrames * sizeof(float)};
    }
    if (onFormat) {
        onFormat(streamFormat_);
    }
    return std::nullopt;
}

AuhalCapture::Failure AuhalCapture::run() {
    if (Failure failure = check(unit_->setInputCallback(auhalInputCallback, this),
                                "Échec configuration du callback (status ")) {
        return failure;
    }
    if (Failure failure = check(unit_->initialize(), "Échec AudioUnitInitialize (status ")) {
        return failure;
    }
    return check(unit_->start(), "Échec démarrage AUHAL (status ");
}

void AuhalCapture::stop() {
    if (unit_) {
        unit_->stop();
        unit_->uninitialize();
        unit_.reset();
    }
    // Freed, not only emptied: 64 channels hold a megabyte.
    buffers_ = {};
    samples_ = {};
}

AudioStatus AuhalCapture::handleRender(std::uint32_t frames) {
    if (!unit_ || buffers_.empty()) {
        return audioSuccess;
    }
    if (frames > maximumFrames) {
        return sliceTooLong;
    }
    for (AudioBuffer& buffer : buffers_) {
        buffer.byteSize = frames * static_cast<std::uint32_t>(sizeof(float));
    }
    if (const AudioStatus status = unit_->render(frames, buffers_); status != audioSuccess) {
        return status;
    }
    if (onSamples) {
        onSamples({.samples = samples_.data(),
                   .channelDistance = maximumFrames,
                   .channelCount = buffers_.size(),
                   .frameCount = frames,
                   .sampleRate = streamFormat_.sampleRate});
    }
    return audioSuccess;
}

}  // namespace tessivo
