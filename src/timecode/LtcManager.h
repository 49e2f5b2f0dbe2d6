#pragma once

#include "base/Lifetime.h"
#include "base/Signal.h"
#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "timecode/AuhalCapture.h"
#include "timecode/BackwardsReader.h"
#include "timecode/CarefulDecoder.h"
#include "timecode/ChannelSearch.h"
#include "timecode/LtcBiphaseDecoder.h"
#include "timecode/TimecodeHealth.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace tessivo {

/// What the rest of the program knows of timecode: the operator's choice of input, the capture, the
/// levels of its channels, and the timecode that one channel carries. Nothing here waits for an
/// audio system. Main thread only.
class LtcManager {
public:
    enum class Field {
        isCapturing,
        currentTimecodeDisplay,
        detectedFps,
        signalDetected,
        availableInputDevices,
        isFetchingInputDevices,
        selectedDeviceId,
        lastError,
        hasLostAudio,
        rawAudioLevel,
        detectedChannelCount,
        levelsPerChannel,
        selectedChannelIndex,
        buffersReceivedCount,
        isCareful,
        countsThirty,
        health,
        channelWithTimecode,
    };

    /// What is given here outlives the manager.
    LtcManager(const Clock& clock, MainQueue& mainQueue, AudioInputSystem& audio,
               std::ostream& log);
    LtcManager(const LtcManager&) = delete;
    LtcManager& operator=(const LtcManager&) = delete;
    ~LtcManager();

    /// Emitted after each assignment to a field, also when its value stays the same.
    Signal<Field> didChange;

    /// Called with each decoded frame, in order: its time of day in frames, and the frame rate that
    /// this counts in. May stop or restart the capture.
    std::function<void(std::int64_t totalFrames, std::int64_t fps)> onFrameDecoded;
    /// Called likewise with each frame that its neighbours confirm, careful or not, after
    /// `onFrameDecoded`.
    std::function<void(std::int64_t totalFrames, std::int64_t fps)> onFrameConfirmed;

    /// Begins to capture from the selected device. When it can't be opened, the capture has ended,
    /// and `lastError` says why. A device that was open and then delivers nothing any more is told
    /// within two seconds, and opened again as soon as that works. Does nothing while capturing.
    void startCapturing();
    /// Goes on capturing from the input of this name, which an earlier run had open: looks for it,
    /// selects it and opens it. As long as it isn't there or doesn't open, it is dead like one that
    /// has died in this run, and looked for again. Does nothing while capturing.
    void resumeCapturing(const std::string& inputName);
    /// Ends the capture. Nothing of it appears afterwards.
    void stopCapturing();
    /// Looks for what the operator can choose from now, and brings `availableInputDevices` up to
    /// date later; everything else goes on meanwhile. The former list stays when the devices can't
    /// be read, which `lastError` tells unless it tells something else. Does nothing while it is
    /// looking.
    void fetchInputDevices();

    /// Whether the operator has a capture running; its device may be opening, or dead for now.
    bool isCapturing() const { return isCapturing_; }
    /// The name of the input that is captured, or was last.
    const std::string& capturedInput() const { return inputName_; }
    /// The last decoded timecode, HH:MM:SS:FF, or "--:--:--:--".
    const std::string& currentTimecodeDisplay() const { return currentTimecodeDisplay_; }
    std::int64_t detectedFps() const { return detectedFps_; }
    /// Whether a frame had been decoded less than 2 seconds before the last block.
    bool signalDetected() const { return signalDetected_; }
    const std::vector<AudioInputDevice>& availableInputDevices() const {
        return availableInputDevices_;
    }
    bool isFetchingInputDevices() const { return isFetchingInputDevices_; }
    std::optional<AudioDeviceId> selectedDeviceId() const { return selectedDeviceId_; }
    /// Why the last start failed, or what ails the capture, a French sentence.
    const std::optional<std::string>& lastError() const { return lastError_; }
    /// Whether audio of this capture, or of the last one while idle, was dropped because the main
    /// thread stood still for too long.
    bool hasLostAudio() const { return hasLostAudio_; }
    /// Peak of the decoded channel in the last block, linear.
    float rawAudioLevel() const { return rawAudioLevel_; }
    std::int64_t detectedChannelCount() const { return detectedChannelCount_; }
    /// Peak of each channel in the last block, linear.
    const std::vector<float>& levelsPerChannel() const { return levelsPerChannel_; }
    /// From 0. A block with fewer channels has its last one decoded; below 0, none is.
    std::int64_t selectedChannelIndex() const { return selectedChannelIndex_; }
    /// Blocks handled since the manager was made.
    std::int64_t buffersReceivedCount() const { return buffersReceivedCount_; }

    void setSelectedDeviceId(std::optional<AudioDeviceId> device);
    void setSelectedChannelIndex(std::int64_t index);

    /// Whether only confirmed frames count as decoded, read behind a high-pass: for a line that
    /// can't be trusted. It costs one frame after each start and each jump. See `CarefulDecoder`.
    bool isCareful() const { return isCareful_; }
    void setCareful(bool careful);
    /// Whether `onFrameDecoded` and `onFrameConfirmed` count 30 frames a second instead of 25. Then
    /// every start is exact, whatever the source counts in: frame numbers from 25 on have a place
    /// of their own, and those that a source doesn't have are never asked for.
    bool countsThirty() const { return countsThirty_; }
    void setCountsThirty(bool countsThirty);
    /// Another channel that carries timecode, from 0, while the decoded one has none.
    std::optional<std::int64_t> channelWithTimecode() const { return channelWithTimecode_; }
    /// How the decoded channel has been doing in this capture, or the last one while idle.
    TimecodeHealth::Reading health() const {
        return health_.reading(carefulDecoder_->heardSeconds());
    }

private:
    template <typename T>
    void assign(T& member, T value, Field field);

    void beginCapture(std::string inputName);
    void handleLoss();
    void handleChannelData(const AudioBlock& block);
    void forgetLine();
    /// `isRunning` tells whether the capture that the samples came from still runs.
    void decode(std::span<const float> samples, double sampleRate,
                const std::function<bool()>& isRunning);
    void searchChannels(const AudioBlock& block);
    void applyDecodedFrame(const LtcBiphaseDecoder::Frame& frame);
    /// Reports a frame as a time of day in frames.
    void report(const LtcBiphaseDecoder::Frame& frame,
                const std::function<void(std::int64_t totalFrames, std::int64_t fps)>& receiver);
    void noteLoss(const LostAudio& lost, double sampleRate);
    void tellLoss();

    const Clock& clock_;
    AudioInputSystem& audio_;
    std::ostream& log_;
    const std::thread::id mainThread_ = std::this_thread::get_id();

    bool isCapturing_ = false;
    std::string currentTimecodeDisplay_;
    std::int64_t detectedFps_ = 25;
    bool signalDetected_ = false;
    std::vector<AudioInputDevice> availableInputDevices_;
    bool isFetchingInputDevices_ = false;
    std::optional<AudioDeviceId> selectedDeviceId_;
    std::string selectedName_;
    std::optional<std::string> lastError_;
    bool hasLostAudio_ = false;
    float rawAudioLevel_ = 0.0F;
    std::int64_t detectedChannelCount_ = 0;
    std::vector<float> levelsPerChannel_;
    std::int64_t selectedChannelIndex_ = 0;
    std::int64_t buffersReceivedCount_ = 0;
    bool isCareful_ = false;
    bool countsThirty_ = false;
    std::optional<std::int64_t> channelWithTimecode_;

    /// A burst of losses that the log doesn't tell of yet.
    struct Burst {
        std::uint64_t blocks = 0;
        double seconds = 0.0;
        Moment latest;
    };
    std::optional<Burst> burst_;

    LtcBiphaseDecoder decoder_;
    std::shared_ptr<CarefulDecoder> carefulDecoder_;  ///< another one for each capture
    BackwardsReader backwardsReader_;
    TimecodeHealth health_;
    std::optional<ChannelSearch> channelSearch_;  ///< while the decoded channel has no timecode
    Moment lastConfirmedTime_ = Moment::distantPast();

    std::string inputName_;
    std::uint64_t captureNumber_ = 0;
    AuhalCapture capture_;
    Lifetime life_;
};

}  // namespace tessivo
