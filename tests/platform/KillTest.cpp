#include "model/ShowJson.h"
#include "platform/posix/FilePreferencesStore.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Shows.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <thread>

using namespace tessivo;

namespace {

/// A name that begins with the number, and whose length changes with it.
std::string nameWith(std::int64_t number) {
    return std::to_string(number) + ' ' +
           std::string(static_cast<std::size_t>(number * 7919 % 6000), 'x');
}

/// Renames one show without end, and writes the number of each name that was stored to `output`.
[[noreturn]] void storm(const std::string& folder, int output) {
    FilePreferencesStore store(folder);
    SimulatedPlatform rest;
    AppState state(Platform{rest.time, rest.time, rest.background, store, rest.files, rest.panels,
                            rest.audio, rest.updates, rest.computer, rest.stayAwake, rest.log,
                            rest.journal});
    if (state.shows().empty()) {
        Show show = showWithSongs(20);
        show.name = nameWith(0);
        state.importShow(show);
    }
    state.setActiveShowId(state.shows().front().id);
    for (std::int64_t number = std::stoll(state.shows().front().name) + 1;; ++number) {
        state.renameActiveShow(nameWith(number));
        if (!state.keepsShows() || ::write(output, &number, sizeof number) != sizeof number) {
            std::_Exit(1);
        }
    }
}

/// Runs the storm for up to `most` from its first word on, or while it still starts, and kills it.
/// Gives the last number that it wrote, 0 for none.
std::int64_t runAndKillStorm(const std::string& folder, bool whileItStarts,
                             std::chrono::microseconds most, std::mt19937_64& random) {
    std::array<int, 2> pipe{};
    REQUIRE(::pipe(pipe.data()) == 0);
    const pid_t child = ::fork();
    if (child == 0) {
        storm(folder, pipe[1]);
    }
    ::close(pipe[1]);
    std::int64_t last = 0;
    REQUIRE((whileItStarts || ::read(pipe[0], &last, sizeof last) == sizeof last));
    std::this_thread::sleep_for(random() % 1000 * most / 1000);
    ::kill(child, SIGKILL);
    int status = 0;
    REQUIRE(::waitpid(child, &status, 0) == child);
    CHECK(WIFSIGNALED(status));  // it hadn't ended by itself
    while (::read(pipe[0], &last, sizeof last) == sizeof last) {
    }
    ::close(pipe[0]);
    return last;
}

}  // namespace

TEST_CASE("killed at any moment, the store keeps every operation that it acknowledged") {
    const char* given = std::getenv("TESSIVO_SEED");
    const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : std::random_device()();
    MESSAGE("TESSIVO_SEED=", seed);
    std::mt19937_64 random(seed);
    // In memory nothing waits for a disk, so that the kills fall between all the other steps.
    for (const auto& parent :
         {std::filesystem::temp_directory_path().string(), std::string("/dev/shm")}) {
        if (!std::filesystem::is_directory(parent)) {
            continue;
        }
        const test::TemporaryFolder folder(parent);
        std::optional<Show> expected;
        std::int64_t number = 0;
        for (int round = 0; round < 60; ++round) {
            CAPTURE(round);
            // Every fourth lives long enough to be killed while it settles what it wrote.
            const std::chrono::milliseconds most(round % 4 == 1 ? 450 : 30);
            const std::int64_t acknowledged =
                runAndKillStorm(folder.path(), round % 4 == 0, most, random);
            FilePreferencesStore store(folder.path());
            REQUIRE(store.takeHold());
            const auto bytes = store.data(AppState::storageKey);
            if (!bytes) {
                CHECK(std::max(acknowledged, number) == 0);
                continue;
            }
            const auto kept = decodePersistedData(*bytes);
            REQUIRE(kept.has_value());
            REQUIRE(kept->shows.size() == 1);
            const std::int64_t last = std::stoll(kept->shows.front().name);
            REQUIRE(last >= std::max(acknowledged, number));
            number = last;
            expected = expected.value_or(kept->shows.front());
            expected->name = nameWith(number);
            CHECK(kept->shows.front() == *expected);
        }
        CHECK(folder.names() == std::set<std::string>{"lock", std::string(AppState::storageKey)});
        MESSAGE(folder.path(), ": ", number, " operations");
        CHECK(number > 30);
    }
}
