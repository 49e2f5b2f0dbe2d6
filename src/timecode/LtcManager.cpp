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
      carefulDecoder_(clock),
      blockArrived_(mainQueue.makeRealtimeTrigger([this] { handleNextBlock(); })),
      capture_(audio) {
    capture_.onFormat = [this](const AudioStreamFormat& format) {
        blocks_ = std::make_shared<AudioBlockQueue>(format.channelsPerFrame, format.sampleRate);
    };
    capture_.onSamples = [this](const AudioBlock& block) {
        if (blocks_->push(block)) {
            blockArrived_->fire();
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
    assign(hasLostAudio_, false, Field::hasLostAudio);
    if (std::optional<std::string> failure = capture_.start(*selectedDeviceId_)) {
        assign(lastError_, std::move(failure), Field::lastError);
        assign(isCapturing_, false, Field::isCapturing);
        return;
    }
    assign(health_, {}, Field::health);
    channelSearch_.reset();
    assign(channelWithTimecode_, {}, Field::channelWithTimecode);
    assign(isCapturing_, true, Field::isCapturing);
}

void LtcManager::stopCapturing() {
    capture_.stop();
    blocks_.reset();
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
            assign(availableInputDevices_, *std::move(devices), Field::availableInputDevices);
        } else {
            log_ << "Audio: entrées illisibles, la liste d'avant est gardée" << std::endl;
        }
        assign(isFetchingInputDevices_, false, Field::isFetchingInputDevices);
    }));
}

void LtcManager::setSelectedDeviceId(std::optional<AudioDeviceId> device) {
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

void LtcManager::handleNextBlock() {
    const std::shared_ptr<AudioBlockQueue> queue = blocks_;
    if (!queue) {
        return;
    }
    if (const auto next = queue->front()) {
        noteLoss(next->lostBefore, next->block.sampleRate);
        handleChannelData(next->block, queue.get());
        queue->pop();
    }
}

// `origin` tells whether the capture that delivered the block still runs: subscribers and the
// frame callback may have ended it, and then nothing more of the block may show.
void LtcManager::handleChannelData(const AudioBlock& block, const AudioBlockQueue* origin) {
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
    decode(block.channel(decoded), block.sampleRate, origin);
    health_.hear(level, carefulDecoder_.heardSeconds());
    didChange.emit(Field::health);
    if (blocks_.get() == origin) {
        const Instant last = isCareful_ ? lastConfirmedTime_ : decoder_.lastValidFrameTime();
        assign(signalDetected_, clock_.now() - last < signalHoldSeconds, Field::signalDetected);
        searchChannels(block);
    }
}

void LtcManager::searchChannels(const AudioBlock& block) {
    std::optional<std::int64_t> found;
    if (clock_.now() - lastConfirmedTime_ < signalHoldSeconds) {
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
                        const AudioBlockQueue* origin) {
    decoder_.feed(samples, [&](const LtcBiphaseDecoder::Frame& frame) {
        if (!isCareful_ && blocks_.get() == origin) {
            applyDecodedFrame(frame);
        }
    });
    carefulDecoder_.feed(samples, sampleRate, [&](const HeardFrame& heard) {
        lastConfirmedTime_ = clock_.now();
        health_.take(heard);
        if (isCareful_ && blocks_.get() == origin) {
            applyDecodedFrame(heard.frame);
        }
        if (blocks_.get() == origin) {
            report(heard.frame, onFrameConfirmed);
        }
    });
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
    const Instant now = clock_.now();
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
