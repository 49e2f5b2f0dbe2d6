#include <QProcess>

#include "StormOperations.h"
#include "model/ShowJson.h"
#include "platform/posix/FilePreferencesStore.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <thread>

using namespace tessivo;

namespace {

/// Runs the storm on the folder for up to a tenth of a second, from its first acknowledgement on or
/// while it still starts, and kills it. Gives the last operation that it acknowledged, 0 for none.
std::int64_t runAndKillStorm(const std::string& folder, bool whileItStarts,
                             std::mt19937_64& random) {
    QProcess storm;
    storm.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    storm.start(QStringLiteral(RECORD_STORM), {QString::fromStdString(folder)});
    REQUIRE(storm.waitForStarted());
    REQUIRE((whileItStarts || storm.waitForReadyRead()));
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 100'000));
    storm.kill();
    storm.waitForFinished();
    CHECK(storm.exitStatus() == QProcess::CrashExit);  // it hadn't ended by itself
    const QByteArray acknowledged = storm.readAllStandardOutput();
    std::int64_t last = 0;
    const qsizetype whole = acknowledged.size() - acknowledged.size() % qsizetype(sizeof last);
    if (whole > 0) {
        std::memcpy(&last, acknowledged.data() + whole - sizeof last, sizeof last);
    }
    return last;
}

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
        const std::int64_t acknowledged = runAndKillStorm(folder.path(), round % 4 == 0, random);

        FilePreferencesStore store(folder.path());
        REQUIRE(store.takeHold());
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
    killStorms(test::TemporaryFolder(), 100, random);
    // In memory nothing waits for a disk, so that the kills fall between all the other steps.
    if (std::filesystem::is_directory("/dev/shm")) {
        killStorms(test::TemporaryFolder("/dev/shm"), 100, random);
    }
}
