#include "platform/audio/InputDeviceLister.h"
#include "support/EventLoop.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

using namespace tessivo;

namespace {

std::string script(const test::TemporaryFolder& folder, const std::string& text) {
    folder.write("lister", "#!/bin/sh\n" + text + "\n");
    std::filesystem::permissions(folder.path("lister"), std::filesystem::perms::owner_all);
    return folder.path("lister");
}

}  // namespace

TEST_CASE("a device list crosses the pipe whole or not at all, and equal names get ordinals") {
    const InputDeviceList devices = {{{"ALSA", "Entrée, \n \"1\"", 0}, 5},
                                     {{"JACK", "system", 0}, 6},
                                     {{"ALSA", "", 0}, 7},
                                     {{"JACK", "system", 1}, 8}};
    const std::string text = encodeInputDevices(devices);
    for (std::size_t length = 0; length < text.size(); ++length) {
        CHECK_FALSE(decodeInputDevices(text.substr(0, length)).has_value());
    }
    CHECK(std::ranges::equal(decodeInputDevices(text).value(), devices, {}, &ListedInputDevice::key,
                             &ListedInputDevice::key));
    CHECK(decodeInputDevices(encodeInputDevices({}))->empty());
}

TEST_CASE("only a lister that ends well gives a list") {
    const test::TemporaryFolder folder;
    const struct {
        const char* text;
        bool isList;
    } rows[] = {
        {"printf 'ALSA\\0a\\0\\0'", true},
        {"printf 'ALSA\\0a\\0\\0'; exit 1", false},
        {"printf 'ALSA\\0a\\0\\0'; kill -SEGV $$", false},
        {"true", false},
        {"exec sleep 600", false},
        {nullptr, false},
    };
    for (const auto& row : rows) {
        CAPTURE(row.text);
        const bool hangs = row.text && std::string_view(row.text) == "exec sleep 600";
        InputDeviceLister lister(row.text ? script(folder, row.text) : folder.path("missing"),
                                 std::chrono::milliseconds(hangs ? 100 : 20'000));
        for (int round = 0; round < 2; ++round) {
            int answers = 0;
            const auto answer = [&](const auto& devices) {
                ++answers;
                CHECK(devices.has_value() == row.isList);
            };
            lister.run(answer);
            lister.run(answer);
            CHECK(answers == 0);
            CHECK(test::runUntil([&] { return answers == 2; }));
        }
    }
}

TEST_CASE("nobody hears of a lister that was given up, and its program ends") {
    const test::TemporaryFolder folder;
    auto lister = std::make_unique<InputDeviceLister>(
        script(folder, "cd ${0%/*}; echo $$ >new; mv new pid; exec sleep 600"),
        std::chrono::seconds(20));
    lister->run([](const auto&) { FAIL("an answer"); });
    REQUIRE(test::runUntil([&] { return folder.names().contains("pid"); }));
    const pid_t process = std::stoi(folder.read("pid"));
    REQUIRE(kill(process, 0) == 0);
    lister.reset();
    CHECK(test::runUntil([&] { return kill(process, 0) != 0; }));
}
