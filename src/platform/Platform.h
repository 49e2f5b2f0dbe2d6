#pragma once

#include <iosfwd>

namespace tessivo {

class AudioInputSystem;
class Background;
class Clock;
class FilePanels;
class FileStore;
class Journal;
class MainQueue;
class Network;
class PreferencesStore;
class StayAwake;
class UpdateFeed;

/// The outside world as the core sees it. What it refers to outlives every object of the core.
struct Platform {
    Clock& clock;
    MainQueue& mainQueue;
    Background& background;
    PreferencesStore& preferences;
    FileStore& files;
    FilePanels& panels;
    AudioInputSystem& audio;
    UpdateFeed& updates;
    Network& network;
    StayAwake& stayAwake;
    std::ostream& log;  ///< standard output, one line per event worth telling
    Journal& journal;
};

}  // namespace tessivo
