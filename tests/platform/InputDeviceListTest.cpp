#include "platform/audio/InputDeviceList.h"

#include <doctest/doctest.h>

using tessivo::decodeInputDevices;
using tessivo::encodeInputDevices;
using tessivo::InputDeviceList;
using tessivo::listInputDevicesInChild;

TEST_CASE("a device list crosses the pipe, and equal names get ordinals") {
    const InputDeviceList devices = {{{"ALSA", "Entrée, \n \"1\"", 0}, 2, 5},
                                     {{"JACK", "system", 0}, 64, 6},
                                     {{"ALSA", "", 0}, 1, 7},
                                     {{"JACK", "system", 0}, 2, 8}};
    const auto read = decodeInputDevices(encodeInputDevices(devices));
    REQUIRE(read.has_value());
    REQUIRE(read->size() == devices.size());
    for (std::size_t i = 0; i < devices.size(); ++i) {
        CHECK((*read)[i].key.hostApi == devices[i].key.hostApi);
        CHECK((*read)[i].key.name == devices[i].key.name);
        CHECK((*read)[i].channels == devices[i].channels);
        CHECK((*read)[i].key.ordinal == (i == 3 ? 1 : 0));
    }
    CHECK(decodeInputDevices(encodeInputDevices({}))->empty());
}

TEST_CASE("a list that was cut short anywhere is no list") {
    const std::string whole =
        encodeInputDevices({{{"ALSA", "a", 0}, 2, 0}, {{"ALSA", "b", 0}, 2, 1}});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        CAPTURE(length);
        CHECK_FALSE(decodeInputDevices(whole.substr(0, length)).has_value());
    }
}

TEST_CASE("a lister that is missing, fails or hangs gives no list") {
    CHECK_FALSE(listInputDevicesInChild("/nowhere/lister").has_value());
    CHECK_FALSE(listInputDevicesInChild("/bin/false").has_value());
    CHECK_FALSE(listInputDevicesInChild(TESSIVO_SOURCE_DIR "/tests/support/hang.sh").has_value());
}
