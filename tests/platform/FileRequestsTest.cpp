#include <QStringList>

#include "platform/qt/FileRequests.h"
#include "support/EventLoop.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>

#include <chrono>
#include <filesystem>
#include <future>

using namespace tessivo;

namespace {

bool handsOver(const QString& path) {
    auto taken = std::async(std::launch::async, [&] { return FileRequests::handOver(path); });
    test::runUntil(
        [&] { return taken.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
    return taken.get();
}

}  // namespace

TEST_CASE("a file goes to the program that runs, and to nobody else's leavings") {
    const test::TemporaryFolder folder;
    qputenv("XDG_RUNTIME_DIR", folder.path("").c_str());
    const QString path = QStringLiteral("/Été\n2.tessivo");
    CHECK_FALSE(handsOver(path));
    folder.write("tessivo-files", "of a program that was killed");
    QStringList opened;
    {
        const FileRequests first([&](const QString& file) { opened.append(file); });
        const FileRequests second([](const QString&) { FAIL("not the first"); });
        CHECK(handsOver(path));
        CHECK(handsOver(path));
        using std::filesystem::perms;
        const perms rights = std::filesystem::status(folder.path("tessivo-files")).permissions();
        CHECK((rights & (perms::group_all | perms::others_all)) == perms::none);
    }
    CHECK(opened == QStringList{path, path});
    CHECK_FALSE(handsOver(path));
}
