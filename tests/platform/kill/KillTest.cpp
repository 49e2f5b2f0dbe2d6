#include "StormOperations.h"
#include "model/ShowJson.h"
#include "platform/qt/FilePreferencesStore.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

using namespace tessivo;

namespace {

/// The storm in its own process, from its first stored operation to its death.
class Storm {
public:
    explicit Storm(std::string folder) {
        int ends[2] = {};
        REQUIRE(::pipe2(ends, O_CLOEXEC) == 0);
        posix_spawn_file_actions_t actions{};
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        std::string program = RECORD_STORM;
        char* const arguments[] = {program.data(), folder.data(), nullptr};
        REQUIRE(::posix_spawn(&process_, program.c_str(), &actions, nullptr, arguments, environ) ==
                0);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        acknowledgements_ = FileDescriptor(ends[0]);
    }

    /// Waits for the first acknowledgement: the program has started and owns the folder.
    void waitForStart() {
        last_ = readNumber();
        REQUIRE(last_ > 0);
    }

    /// Kills it, and gives the last operation that it acknowledged, 0 for none.
    std::int64_t kill() {
        ::kill(process_, SIGKILL);
        int status = 0;
        ::waitpid(process_, &status, 0);
        CHECK(WIFSIGNALED(status));  // it hadn't ended by itself
        while (const std::int64_t number = readNumber()) {
            last_ = number;
        }
        return last_;
    }

private:
    std::int64_t readNumber() const {
        std::int64_t number = 0;
        const auto size = static_cast<ssize_t>(sizeof number);
        return ::read(acknowledgements_.value(), &number, sizeof number) == size ? number : 0;
    }

    pid_t process_ = -1;
    FileDescriptor acknowledgements_;
    std::int64_t last_ = 0;
};

std::uint64_t chooseSeed() {
    const char* given = std::getenv("TESSIVO_SEED");
    return given != nullptr ? std::strtoull(given, nullptr, 10) : std::random_device()();
}

/// Starts a storm on the folder and kills it `kills` times, and looks at what is left each time.
void killStorms(const test::TemporaryFolder& folder, int kills, std::mt19937_64& random) {
    const std::string key(AppState::storageKey);
    SimulatedPlatform computer;
    AppState expected(computer);
    std::int64_t number = 0;
    for (int round = 0; round < kills; ++round) {
        CAPTURE(round);
        Storm storm(folder.path());
        if (round % 4 != 0) {  // the others are killed while they start
            storm.waitForStart();
        }
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 100'000));
        const std::int64_t acknowledged = storm.kill();

        FilePreferencesStore store(folder.path());
        REQUIRE(store.isWritable());
        const auto bytes = store.data(key);
        if (!bytes) {
            CHECK(std::max(acknowledged, number) == 0);
            continue;
        }
        const auto kept = decodePersistedData(*bytes);
        REQUIRE(kept.has_value());
        const std::int64_t last = test::lastStormOperation(kept->shows, kept->activeSongIndex);
        REQUIRE(last >= std::max(acknowledged, number));
        while (number < last) {
            test::runStormOperation(expected, ++number);
        }
        REQUIRE(kept->shows == expected.shows());
        CHECK(kept->activeSongIndex == expected.activeSongIndex());
    }
    CHECK(folder.names() == std::set<std::string>{"lock", key});  // the last store has ended
    MESSAGE(folder.path(), ": ", number, " operations, ", kills, " kills");
    CHECK(number > kills / 2);
}

}  // namespace

TEST_CASE("killed at any moment, the store keeps every operation that it acknowledged") {
    const std::uint64_t seed = chooseSeed();
    MESSAGE("TESSIVO_SEED=", seed);
    std::mt19937_64 random(seed);
    killStorms(test::TemporaryFolder(), 150, random);
    // In memory nothing waits for a disk, so that the kills fall between all the other steps.
    if (std::filesystem::is_directory("/dev/shm")) {
        killStorms(test::TemporaryFolder("/dev/shm"), 150, random);
    }
}
