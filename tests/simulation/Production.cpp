#include "simulation/Production.h"

#include "live/Countdown.h"
#include "model/AppState.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "sync/AdminBroadcaster.h"
#include "sync/AdminSyncBridge.h"
#include "sync/NetworkFraming.h"
#include "sync/ReceiverClient.h"

#include <doctest/doctest.h>

#include <optional>
#include <utility>

namespace tessivo::test {

namespace {

constexpr int stepsBetweenCalms = 40;

/// What an admin tells at this moment; nothing without an active show.
std::optional<std::string> toldBy(const AppState& state) {
    const Show* show = state.activeShow();
    if (show == nullptr) {
        return std::nullopt;
    }
    return encodeJson(LiveState{*show, state.activeSongIndex(), state.currentSongStartedAt()});
}

std::string shownBy(const ReceiverClient& client) {
    return client.liveState() ? encodeJson(*client.liveState()) : std::string();
}

}  // namespace

/// An admin's computer and the program on it. Its preferences outlive the program.
struct Production::Admin {
    /// The program between its start and its end.
    struct Program {
        explicit Program(const Platform& platform)
            : state(platform),
              broadcaster(platform.network, platform.mainQueue),
              bridge(platform.mainQueue) {
            attaching = broadcaster.didChange.subscribe([this](AdminBroadcaster::Field) {
                if (isBroadcasting()) {
                    bridge.attach(state, broadcaster);
                }
            });
            broadcaster.startChecking();
        }

        bool isBroadcasting() const {
            return broadcaster.status().kind == AdminNetworkStatus::Kind::broadcasting;
        }
        bool isRefused() const {
            return broadcaster.status().kind == AdminNetworkStatus::Kind::conflict;
        }

        AppState state;
        AdminBroadcaster broadcaster;
        AdminSyncBridge bridge;
        Subscription attaching;
    };

    explicit Admin(SimulatedComputer& at) : computer(at) {}

    SimulatedComputer& computer;
    SimulatedPlatform disk;
    std::unique_ptr<Program> program;
};

struct Production::Station {
    explicit Station(SimulatedComputer& at) : computer(at) {}

    SimulatedComputer& computer;
    std::unique_ptr<ReceiverClient> client;
};

/// A program that offers the same service and doesn't keep to the protocol.
class Production::NonsenseSpeaker {
public:
    NonsenseSpeaker(SimulatedComputer& computer, RandomRecords& random)
        : random_(random), listener_(computer.makeListener(AdminBroadcaster::serviceType)) {
        listener_->onNewConnection = [this](std::unique_ptr<StreamConnection> connection) {
            connection->start();
            connection->send(std::make_shared<const std::string>(nonsense()));
            victims_.push_back(std::move(connection));
        };
        listener_->start();
    }

private:
    std::string nonsense() {
        std::string json = encodeJson(LiveState{random_.show(), random_.integer(), {0.0}});
        if (random_.below(2) == 0) {
            return json;
        }
        json.resize(1 + random_.below(json.size() - 1));
        return *NetworkFraming::frame(json);
    }

    RandomRecords& random_;
    std::unique_ptr<ServiceListener> listener_;
    std::vector<std::unique_ptr<StreamConnection>> victims_;
};

Production::Production(std::uint64_t seed) : random_(seed) {
    for (std::size_t count = 1 + random_.below(2); count > 0; --count) {
        computers_.push_back(&network_.addComputer("Régie " + std::to_string(admins_.size())));
        admins_.push_back(std::make_unique<Admin>(*computers_.back()));
        startProgram(*admins_.back());
    }
    for (std::size_t count = 1 + random_.below(5); count > 0; --count) {
        computers_.push_back(&network_.addComputer("Poste " + std::to_string(stations_.size())));
        stations_.push_back(std::make_unique<Station>(*computers_.back()));
        startStation(*stations_.back());
    }
}

Production::~Production() = default;

void Production::run(int count) {
    for (int step = 1; step <= count; ++step) {
        note(act());
        checkAlways();
        if (step % stepsBetweenCalms == 0 || step == count) {
            calmDown();
            checkCalm();
        }
    }
}

std::string Production::act() {
    struct Action {
        std::size_t weight;
        std::string (Production::*act)();
    };
    static constexpr Action actions[] = {
        {40, &Production::operate},      {6, &Production::changeActiveShow},
        {20, &Production::edit},         {40, &Production::wait},
        {32, &Production::disturbCable}, {3, &Production::endAdmin},
        {6, &Production::toggleStation}, {2, &Production::toggleNonsense}};
    constexpr std::size_t weights = [] {
        std::size_t sum = 0;
        for (const Action& action : actions) {
            sum += action.weight;
        }
        return sum;
    }();
    const Action* action = actions;
    for (std::size_t choice = random_.below(weights); choice >= action->weight; ++action) {
        choice -= action->weight;
    }
    return (this->*action->act)();
}

std::string Production::operate() {
    Admin& admin = anyOf(admins_);
    if (!admin.program || admin.program->isRefused()) {
        startProgram(admin);
        return "start of " + admin.computer.name();
    }
    AppState& state = admin.program->state;
    const std::size_t choice = random_.below(4);
    if (choice == 0) {
        state.goPrev();
    } else if (choice == 1) {
        state.jumpTo(random_.integer());
    } else {
        state.goNext();
    }
    return "cursor at " + std::to_string(state.activeSongIndex());
}

std::string Production::changeActiveShow() {
    Admin& admin = anyOf(admins_);
    if (!admin.program) {
        return "nobody to open a show";
    }
    AppState& state = admin.program->state;
    const auto& shows = state.shows();
    if (shows.empty() || random_.below(3) == 0) {
        state.importShow(random_.show());
        return "a new show";
    }
    if (random_.below(3) == 0) {
        state.setActiveShowId(std::nullopt);
        return "no show";
    }
    state.setActiveShowId(shows[random_.below(shows.size())].id);
    return "another show";
}

/// Changes the setlist of the show that is on; whoever plays goes on playing.
std::string Production::edit() {
    Admin& admin = anyOf(admins_);
    const Show* show = admin.program ? admin.program->state.activeShow() : nullptr;
    if (show == nullptr || show->songs.empty()) {
        return "nothing to edit";
    }
    AppState& state = admin.program->state;
    const auto count = show->songs.size();
    const Song chosen = show->songs[random_.below(count)];
    const Song* playing = songAt(show, state.activeSongIndex());
    const std::optional<Uuid> id = playing ? std::optional(playing->id) : std::nullopt;
    std::string done;
    switch (random_.below(4)) {
        case 0:
            state.moveSong({static_cast<std::int64_t>(random_.below(count))},
                           static_cast<std::int64_t>(random_.below(count + 1)));
            done = "moved a song";
            break;
        case 1:
            if (id == chosen.id) {
                return "kept the song that is on";
            }
            state.removeSong(chosen.id);
            done = "removed a song";
            break;
        case 2:
            state.updateSongTitle(chosen.id, random_.text());
            done = "renamed a song";
            break;
        default:
            state.addGuest(chosen.id);
            done = "added a guest";
    }
    if (id) {
        playing = songAt(state.activeShow(), state.activeSongIndex());
        REQUIRE_MESSAGE((playing && playing->id == *id), history_);
    }
    return done;
}

std::string Production::wait() {
    const double seconds = static_cast<double>(random_.below(2000)) / 1000.0;
    time_.advance(seconds);
    return "waited " + std::to_string(seconds);
}

std::string Production::disturbCable() {
    SimulatedComputer& computer = *computers_[random_.below(computers_.size())];
    switch (random_.below(6)) {
        case 0:
            computer.setLatency(static_cast<double>(random_.below(500)) / 1000.0);
            return "slowed " + computer.name();
        case 1:
            computer.setSegmentSize(1 + random_.below(1448));
            return "cut up the stream of " + computer.name();
        case 2:
            computer.setStalled(true);
            return "stalled " + computer.name();
        case 3:
            computer.setStalled(false);
            return "freed " + computer.name();
        case 4:
            computer.cutConnections();
            return "cut " + computer.name();
        default:
            computer.truncateAfter(random_.below(3000));
            return "truncated " + computer.name();
    }
}

std::string Production::endAdmin() {
    Admin& admin = anyOf(admins_);
    stopProgram(admin);
    return "end of " + admin.computer.name();
}

std::string Production::toggleStation() {
    Station& station = anyOf(stations_);
    if (station.client) {
        station.client.reset();
        return "end of " + station.computer.name();
    }
    startStation(station);
    return "start of " + station.computer.name();
}

std::string Production::toggleNonsense() {
    if (nonsense_) {
        nonsense_.reset();
        return "nonsense ended";
    }
    nonsense_ = std::make_unique<NonsenseSpeaker>(stranger_, random_);
    return "nonsense";
}

void Production::startStation(Station& station) {
    station.client = std::make_unique<ReceiverClient>(station.computer);
    station.client->start();
}

void Production::startProgram(Admin& admin) {
    stopProgram(admin);
    SimulatedPlatform& disk = admin.disk;
    admin.program = std::make_unique<Admin::Program>(
        Platform{time_, time_, disk.preferences, disk.files, disk.panels, disk.audio, disk.updates,
                 admin.computer, disk.stayAwake, disk.log});
    // Which show was active isn't kept: the operator opens one.
    AppState& state = admin.program->state;
    if (state.shows().empty()) {
        state.importShow(random_.show());
    }
    state.setActiveShowId(state.shows().back().id);
}

/// Ends the program as a crash would, at any moment; what it had must all be kept.
void Production::stopProgram(Admin& admin) {
    if (!admin.program) {
        return;
    }
    const std::vector<Show> shows = admin.program->state.shows();
    const std::int64_t index = admin.program->state.activeSongIndex();
    admin.program.reset();
    const AppState restored(admin.disk);
    REQUIRE_MESSAGE(restored.shows() == shows, history_);
    REQUIRE_MESSAGE(restored.activeSongIndex() == index, history_);
}

void Production::note(const std::string& line) {
    rememberWhatIsTold();
    history_ += line;
    for (const auto& station : stations_) {
        const auto state = station->client ? station->client->liveState() : std::nullopt;
        history_ += " | " + (state ? std::to_string(state->activeSongIndex) : "-");
    }
    history_ += '\n';
}

void Production::rememberWhatIsTold() {
    for (const auto& admin : admins_) {
        if (admin->program) {
            if (auto told = toldBy(admin->program->state)) {
                told_.insert(std::move(*told));
            }
        }
    }
}

/// What holds at any moment.
void Production::checkAlways() {
    for (const auto& station : stations_) {
        if (!station->client || !station->client->liveState()) {
            continue;
        }
        REQUIRE_MESSAGE(station->client->status() == ReceiverStatus::connected, history_);
        REQUIRE_MESSAGE(told_.contains(shownBy(*station->client)), history_);
    }
}

/// Repairs the network, ends what stands in the way, and gives everybody time.
void Production::calmDown() {
    nonsense_.reset();
    for (SimulatedComputer* computer : computers_) {
        computer->repairCable();
    }
    time_.advance(10.0);
    for (const auto& admin : admins_) {
        if (admin->program && admin->program->isRefused()) {
            startProgram(*admin);  // the operator tries again
        }
    }
    time_.advance(10.0);
    note("calm");
}

/// What holds when nothing is on its way any more.
void Production::checkCalm() {
    std::set<std::string> latest;
    std::size_t served = 0;
    bool isAnyoneBroadcasting = false;
    for (const auto& admin : admins_) {
        if (!admin->program || !admin->program->isBroadcasting()) {
            continue;
        }
        isAnyoneBroadcasting = true;
        const AdminBroadcaster& broadcaster = admin->program->broadcaster;
        served += broadcaster.connectionCount();
        latest.insert(broadcaster.latestState() ? encodeJson(*broadcaster.latestState()) : "");
        if (const auto told = toldBy(admin->program->state)) {
            REQUIRE_MESSAGE(latest.contains(*told), history_);
        }
    }
    std::size_t following = 0;
    for (const auto& station : stations_) {
        if (!station->client) {
            continue;
        }
        const bool isConnected = station->client->status() == ReceiverStatus::connected;
        following += isConnected ? 1 : 0;
        REQUIRE_MESSAGE(isConnected == isAnyoneBroadcasting, history_);
        REQUIRE_MESSAGE((!isConnected || latest.contains(shownBy(*station->client))), history_);
    }
    REQUIRE_MESSAGE(served == following, history_);
}

}  // namespace tessivo::test
