#include "timecode/AuhalCapture.h"

namespace tessivo {

namespace {

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

std::optional<std::string> AuhalCapture::start(AudioDeviceId device) {
    stop();
    AudioInputSystem::Opening opening = system_.open(device);
    if (const auto* failure = std::get_if<AudioFailure>(&opening)) {
        return sentenceFor(*failure);
    }
    stream_ = std::get<std::shared_ptr<AudioInputStream>>(std::move(opening));
    const AudioStreamFormat format = stream_->format();
    if (format.channelsPerFrame == 0) {
        return "Le périphérique signale 0 canal.";
    }
    onFormat(format);
    if (const auto failure = stream_->start(onSamples)) {
        return sentenceFor(*failure);
    }
    return std::nullopt;
}

void AuhalCapture::stop() {
    if (const auto stream = std::move(stream_)) {
        stream->stop();
    }
}

}  // namespace tessivo
