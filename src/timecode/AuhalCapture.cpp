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

void AuhalCapture::start(AudioDeviceId device) {
    stop();
    stream_ = system_.capture(
        device, {.onStart =
                     [this](const AudioStreamFormat& format) {
                         if (format.channelsPerFrame == 0) {
                             end("Le périphérique signale 0 canal.");
                         } else {
                             onStart();
                         }
                     },
                 .onBlock = [this](const AudioBlock& block) { onSamples(block); },
                 .onEnd = [this](const AudioFailure& failure) { end(sentenceFor(failure)); }});
}

void AuhalCapture::end(const std::string& sentence) {
    stop();
    onEnd(sentence);
}

}  // namespace tessivo
