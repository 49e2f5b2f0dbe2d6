#include "platform/posix/FileJournal.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

using namespace tessivo;

namespace {

/// 2026-07-14 23:59:58 in Paris, two hours before UTC.
constexpr Instant beforeMidnight{805'759'198.0};
constexpr double day = 86'400.0;

struct Evening {
    Evening() {
        ::setenv("TZ", "Europe/Paris", 1);
        ::tzset();
    }
    ~Evening() {
        ::unsetenv("TZ");
        ::tzset();
    }
    std::string content(const char* name) const {
        std::ifstream file(folder.path("journal/") + name);
        return {std::istreambuf_iterator(file), {}};
    }
    std::set<std::string> names() const {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path("journal"))) {
            found.insert(entry.path().filename().string());
        }
        return found;
    }

    const test::TemporaryFolder folder;
    std::ostringstream trouble;
    FileJournal journal{folder.path("journal"), trouble};
};

}  // namespace

TEST_CASE("a line stands in the file of its local day, whatever the clock does") {
    Evening evening;
    evening.journal.write(beforeMidnight, "a");
    evening.journal.write(beforeMidnight + 3.5, "b");
    evening.journal.write(beforeMidnight + 0.9, "c\nd\t");
    CHECK(evening.content("2026-07-14.txt") == "23:59:58  a\n23:59:58  c d \n");
    CHECK(evening.content("2026-07-15.txt") == "00:00:01  b\n");
    CHECK(evening.journal.file() == evening.folder.path("journal/2026-07-14.txt"));
    struct stat status {};
    REQUIRE(::stat(evening.journal.file().c_str(), &status) == 0);
    CHECK((status.st_mode & 0777U) == 0600U);
    CHECK(evening.trouble.str().empty());
}

TEST_CASE("the files of the last thirty days are kept, that of now among them") {
    Evening evening;
    evening.journal.write(beforeMidnight + -day, "a");
    std::ofstream(evening.folder.path("journal/Mes notes.txt")) << "b";
    for (int i = 0; i < 40; ++i) {
        evening.journal.write(beforeMidnight + i * day, "c");
    }
    CHECK(evening.names().size() == FileJournal::filesKept + 1);
    CHECK(evening.names().contains("Mes notes.txt"));
    CHECK_FALSE(evening.names().contains("2026-07-23.txt"));
    evening.journal.write(Instant{}, "a clock that lost its battery");
    CHECK(evening.names().size() == FileJournal::filesKept + 1);
    CHECK(evening.content("2001-01-01.txt").starts_with("01:00:00  a clock"));
}

TEST_CASE("a journal that can't be written is told once, waits for nobody and goes on") {
    Evening evening;
    std::ofstream(evening.folder.path("journal")) << "a file in the folder's place";
    evening.journal.write(beforeMidnight, "a");
    evening.journal.write(beforeMidnight, "b");
    const std::string told = evening.trouble.str();
    CHECK(told.find(evening.journal.file()) != std::string::npos);
    CHECK(std::ranges::count(told, '\n') == 1);

    std::filesystem::remove(evening.folder.path("journal"));
    evening.journal.write(beforeMidnight, "c");
    CHECK(evening.content("2026-07-14.txt") == "23:59:58  c\n");
    REQUIRE(::mkfifo(evening.folder.path("journal/2026-07-15.txt").c_str(), 0600) == 0);
    evening.journal.write(beforeMidnight + day, "nobody reads the pipe");
    CHECK(evening.trouble.str() == told);
}
