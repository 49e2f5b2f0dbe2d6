#include "timecode/LtcManager.h"

#include "timecode/AudioLevel.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstdio>
#include <ostream>
#include <utility>

namespace tessivo {

namespace {

constexpr const char* noTimecode = "--:--:--:--";
constexpr double signalHoldSeconds = 2.0;
/// Losses that come closer to each other are one burst, so that a computer that is too slow all the
/// time doesn't fill the log.
constexpr double burstGapSeconds = 1.0;
constexpr const char* unreadableDevices =
    "Les entrées audio ne répondent pas : la liste d'avant est gardée.";

std::string timecodeText(const LtcBiphaseDecoder::Frame& frame) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d:%02d", static_cast<int>(frame.hours),
                  static_cast<int>(frame.minutes), static_cast<int>(frame.seconds),
                  static_cast<int>(frame.frames));
    return text.data();
}

}  // namespace

LtcManager::LtcManager(const Clock& clock, MainQueue& mainQueue, AudioInputSystem& audio,
                       std::ostream& log)
    : clock_(clock),
      audio_(audio),
      log_(log),
      currentTimecodeDisplay_(noTimecode),
      decoder_(clock),
      carefulDecoder_(std::make_shared<CarefulDecoder>(clock)),
      backwardsReader_(clock),
      capture_(mainQueue, audio) {
    capture_.onSamples = [this](const AudioBlock& block) { handleChannelData(block); };
    capture_.onRefused = [this](const std::string& why) {
        assign(lastError_, {why}, Field::lastError);
        assign(isCapturing_, false, Field::isCapturing);
    };
    capture_.onLost = [this] { handleLoss(); };
    capture_.onBack = [this] { assign(lastError_, {}, Field::lastError); };
    capture_.onListed = [this](std::vector<AudioInputDevice> devices,
                               std::optional<AudioDeviceId> found) {
        assign(availableInputDevices_, std::move(devices), Field::availableInputDevices);
        if (found) {
            setSelectedDeviceId(found);
        }
    };
}

LtcManager::~LtcManager() {
    assert(std::this_thread::get_id() == mainThread_);
}

template <typename T>
void LtcManager::assign(T& member, T value, Field field) {
    member = std::move(value);
    didChange.emit(field);
}

void LtcManager::startCapturing() {
    if (isCapturing_) {
        return;
    }
    assign(lastError_, {}, Field::lastError);
    if (!selectedDeviceId_) {
        assign(lastError_, {"Choisis d'abord un périphérique d'entrée."}, Field::lastError);
        return;
    }
    beginCapture(selectedName_);
    capture_.start(*selectedDeviceId_);
    assign(isCapturing_, true, Field::isCapturing);
}

void LtcManager::resumeCapturing(const std::string& inputName) {
    if (!isCapturing_) {
        beginCapture(inputName);
        capture_.startAgain(inputName);
        assign(isCapturing_, true, Field::isCapturing);
    }
}

void LtcManager::beginCapture(std::string inputName) {
    assign(hasLostAudio_, false, Field::hasLostAudio);
    forgetLine();
    inputName_ = std::move(inputName);
}

void LtcManager::stopCapturing() {
    ++captureNumber_;
    capture_.stop();
    tellLoss();
    assign(isCapturing_, false, Field::isCapturing);
    assign(signalDetected_, false, Field::signalDetected);
    assign(currentTimecodeDisplay_, std::string(noTimecode), Field::currentTimecodeDisplay);
}

void LtcManager::fetchInputDevices() {
    if (isFetchingInputDevices_) {
        return;
    }
    assign(isFetchingInputDevices_, true, Field::isFetchingInputDevices);
    audio_.fetchDevices(life_.guard([this](std::optional<std::vector<AudioInputDevice>> devices) {
        if (devices) {
            if (lastError_ == unreadableDevices) {
                assign(lastError_, {}, Field::lastError);
            }
            assign(availableInputDevices_, *std::move(devices), Field::availableInputDevices);
        } else {
            log_ << "Audio: entrées illisibles, la liste d'avant est gardée" << std::endl;
            if (!lastError_) {
                assign(lastError_, {unreadableDevices}, Field::lastError);
            }
        }
        assign(isFetchingInputDevices_, false, Field::isFetchingInputDevices);
    }));
}

// The name is looked up now: a dead device may be in no list any more when it is started again.
void LtcManager::setSelectedDeviceId(std::optional<AudioDeviceId> device) {
    const auto listed = std::ranges::find(availableInputDevices_, device, &AudioInputDevice::id);
    selectedName_ = listed != availableInputDevices_.end() ? listed->name : std::string();
    assign(selectedDeviceId_, device, Field::selectedDeviceId);
}

void LtcManager::setSelectedChannelIndex(std::int64_t index) {
    assign(selectedChannelIndex_, index, Field::selectedChannelIndex);
}

void LtcManager::setCareful(bool careful) {
    assign(isCareful_, careful, Field::isCareful);
}

void LtcManager::setCountsThirty(bool countsThirty) {
    assign(countsThirty_, countsThirty, Field::countsThirty);
}

void LtcManager::handleLoss() {
    assign(lastError_, {"Plus de son reçu de « " + inputName_ + " »."}, Field::lastError);
    forgetLine();
    assign(signalDetected_, false, Field::signalDetected);
    assign(levelsPerChannel_, std::vector<float>(levelsPerChannel_.size()),
           Field::levelsPerChannel);
    assign(rawAudioLevel_, 0.0F, Field::rawAudioLevel);
}

void LtcManager::forgetLine() {
    carefulDecoder_ = std::make_shared<CarefulDecoder>(clock_);
    backwardsReader_.forget();
    lastConfirmedTime_ = Moment::distantPast();
    assign(health_, {}, Field::health);
    channelSearch_.reset();
    assign(channelWithTimecode_, {}, Field::channelWithTimecode);
}

void LtcManager::handleChannelData(const AudioBlock& block) {
    // Subscribers and the frame callback may end the capture that the block came from: then nothing
    // more of it may show.
    const auto isRunning = [this, number = captureNumber_] { return number == captureNumber_; };
    noteLoss(block.lostBefore, block.sampleRate);
    assign(buffersReceivedCount_, buffersReceivedCount_ + 1, Field::buffersReceivedCount);
    const auto channelCount = std::ssize(block.channels);
    assign(detectedChannelCount_, channelCount, Field::detectedChannelCount);
    std::vector<float> levels(block.channels.size());
    for (std::size_t channel = 0; channel < levels.size(); ++channel) {
        levels[channel] = peakLevel(block.channel(channel));
    }
    assign(levelsPerChannel_, std::move(levels), Field::levelsPerChannel);

    const std::int64_t decodedIndex = std::min(channelCount - 1, selectedChannelIndex_);
    if (decodedIndex < 0) {
        return;
    }
    const auto decoded = static_cast<std::size_t>(decodedIndex);
    const float level = levelsPerChannel_[decoded];
    assign(rawAudioLevel_, level, Field::rawAudioLevel);
    decode(block.channel(decoded), block.sampleRate, isRunning);
    if (isRunning()) {
        health_.hear(level, carefulDecoder_->heardSeconds());
        didChange.emit(Field::health);
        const Moment last = isCareful_ ? lastConfirmedTime_ : decoder_.lastValidFrameTime();
        assign(signalDetected_, clock_.moment() - last < signalHoldSeconds, Field::signalDetected);
        searchChannels(block);
    }
}

void LtcManager::searchChannels(const AudioBlock& block) {
    std::optional<std::int64_t> found;
    if (clock_.moment() - lastConfirmedTime_ < signalHoldSeconds) {
        channelSearch_.reset();
    } else if (!channelSearch_) {
        channelSearch_.emplace(clock_);
    }
    if (channelSearch_) {
        found = channelSearch_->search(block, levelsPerChannel_);
    }
    if (found != channelWithTimecode_) {
        assign(channelWithTimecode_, found, Field::channelWithTimecode);
    }
}

// Both decoders hear all: the careful one tells whether the other can be trusted, and either can
// take over at any time.
void LtcManager::decode(std::span<const float> samples, double sampleRate,
                        const std::function<bool()>& isRunning) {
    const std::shared_ptr<CarefulDecoder> careful = carefulDecoder_;  // of this capture
    decoder_.feed(samples, [&](const LtcBiphaseDecoder::Frame& frame) {
        if (!isCareful_ && isRunning()) {
            applyDecodedFrame(frame);
        }
    });
    bool ranForwards = false;
    careful->feed(samples, sampleRate, [&](const HeardFrame& heard) {
        ranForwards = true;
        if (!isRunning()) {
            return;
        }
        lastConfirmedTime_ = clock_.moment();
        health_.take(heard);
        if (isCareful_) {
            applyDecodedFrame(heard.frame);
        }
        if (isRunning()) {
            report(heard.frame, onFrameConfirmed);
        }
    });
    if (ranForwards) {
        backwardsReader_.forget();
    } else if (backwardsReader_.take(samples, sampleRate)) {
        health_.takeBackwards(careful->heardSeconds());
    }
}

void LtcManager::applyDecodedFrame(const LtcBiphaseDecoder::Frame& frame) {
    assign(detectedFps_, frame.fps, Field::detectedFps);
    assign(currentTimecodeDisplay_, timecodeText(frame), Field::currentTimecodeDisplay);
    report(frame, onFrameDecoded);
}

void LtcManager::report(
    const LtcBiphaseDecoder::Frame& frame,
    const std::function<void(std::int64_t totalFrames, std::int64_t fps)>& receiver) {
    const std::int64_t fps = countsThirty_ ? 30 : frame.fps;
    if (receiver) {
        receiver((frame.hours * 3600 + frame.minutes * 60 + frame.seconds) * fps + frame.frames,
                 fps);
    }
}

void LtcManager::noteLoss(const LostAudio& lost, double sampleRate) {
    const Moment now = clock_.moment();
    if (lost.blocks > 0) {
        Burst& burst = burst_ ? *burst_ : burst_.emplace(Burst{});
        burst.blocks += lost.blocks;
        burst.seconds += static_cast<double>(lost.frames) / sampleRate;
        burst.latest = now;
        assign(hasLostAudio_, true, Field::hasLostAudio);
    } else if (burst_ && now - burst_->latest >= burstGapSeconds) {
        tellLoss();
    }
}

void LtcManager::tellLoss() {
    if (const auto burst = std::exchange(burst_, std::nullopt)) {
        log_ << "Audio: l'ordinateur n'a pas suivi, blocs perdus: " << burst->blocks << " ("
             << std::lround(burst->seconds * 1000.0) << " ms)" << std::endl;
    }
}

}  // namespace tessivo
