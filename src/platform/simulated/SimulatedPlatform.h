#pragma once

#include "platform/Background.h"
#include "platform/FilePanels.h"
#include "platform/FileStore.h"
#include "platform/Journal.h"
#include "platform/Platform.h"
#include "platform/PreferencesStore.h"
#include "platform/StayAwake.h"
#include "platform/UpdateFeed.h"
#include "platform/simulated/SimulatedAudioInput.h"
#include "platform/simulated/SimulatedMainQueue.h"
#include "platform/simulated/SimulatedNetwork.h"

#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessivo {

/// Preferences in memory, which outlive the state that writes them as a disk would.
class SimulatedPreferences final : public PreferencesStore {
public:
    bool takeHold() override;
    bool isKeeping() const override { return isHeld && !isUnwritten; }
    std::optional<std::string> data(std::string_view key) override;
    void setData(std::string_view key, std::string_view bytes) override;
    void remove(std::string_view key) override;
    bool setAside(std::string_view key) override;

    std::map<std::string, std::string, std::less<>> values;
    std::vector<std::string> valuesSetAside;
    int writes = 0;
    bool refusesToSetAside = false;
    bool isHeldElsewhere = false;  ///< by another running program
    bool isFull = false;           ///< no value can be written

private:
    bool isHeld = false;
    bool isUnwritten = false;
};

/// Files in memory.
class SimulatedFiles final : public FileStore {
public:
    std::optional<std::string> read(const FileLocation& location,
                                    std::size_t maximumBytes) override;
    bool isLongerThan(const FileLocation& location, std::size_t bytes) override;
    bool writeAtomically(const FileLocation& location, std::string_view bytes) override;

    std::map<FileLocation, std::string> contents;
    bool isFull = false;  ///< every write fails
};

/// Panels answered in advance: each call takes the next answer, and cancels when there is none.
class SimulatedPanels final : public FilePanels {
public:
    std::optional<FileLocation> chooseSaveLocation(const SaveRequest& request) override;
    std::optional<FileLocation> chooseFileToOpen(const OpenRequest& request) override;

    std::vector<FileLocation> answers;
    std::vector<SaveRequest> saveRequests;
    std::vector<OpenRequest> openRequests;

private:
    std::optional<FileLocation> nextAnswer();
};

/// A feed that answers on the next turn with what a test sets.
class SimulatedUpdateFeed final : public UpdateFeed {
public:
    explicit SimulatedUpdateFeed(MainQueue& mainQueue) : mainQueue_(mainQueue) {}
    void fetchLatestVersion(Answer answer) override;

    std::optional<std::string> latestVersion;

private:
    MainQueue& mainQueue_;
};

/// Does the work on the next turn, at once and on the one thread there is.
class SimulatedBackground final : public Background {
public:
    explicit SimulatedBackground(MainQueue& mainQueue) : mainQueue_(mainQueue) {}
    void run(std::function<void()> work) override { mainQueue_.post(std::move(work)); }

private:
    MainQueue& mainQueue_;
};

/// Remembers whether the computer is to stay awake.
class SimulatedStayAwake final : public StayAwake {
public:
    void set(bool awake) override { isAwake = awake; }

    bool isAwake = false;
};

/// The lines of the evening, without their times.
class SimulatedJournal final : public Journal {
public:
    void write(Instant, std::string_view line) override { lines.emplace_back(line); }
    std::string file() const override { return {}; }

    std::vector<std::string> lines;
};

/// A whole computer in one value, in virtual time, alone on its network unless a test adds others.
struct SimulatedPlatform {
    SimulatedMainQueue time;
    SimulatedBackground background{time};
    SimulatedPreferences preferences;
    SimulatedFiles files;
    SimulatedPanels panels;
    SimulatedAudioInput audio{time};
    SimulatedUpdateFeed updates{time};
    SimulatedNetwork network{time};
    SimulatedComputer& computer = network.addComputer("Régie");
    SimulatedStayAwake stayAwake;
    std::ostringstream log;
    SimulatedJournal journal;

    operator Platform() {
        return {time,  time,    background, preferences, files, panels,
                audio, updates, computer,   stayAwake,   log,   journal};
    }
};

}  // namespace tessivo
