#include "ltc/LtcEncoder.h"
#include "simulation/AdminComputer.h"
#include "support/Shows.h"
#include "sync/ReceiverClient.h"
#include "timecode/LtcManager.h"

#include <malloc.h>

#include <array>
#include <ostream>

using namespace tessivo;
using namespace tessivo::test;

namespace {

constexpr int songCount = 60;
constexpr std::size_t blockSize = 480;  // samples, 10 ms

/// An admin that timecode runs through a song a minute, and a station that follows it.
class LongShow {
public:
    LongShow() {
        station_.start();
        computer_.time.advance(2.0);
        Show show = showWithSongs(songCount);
        for (int i = 0; i < songCount; ++i) {
            Song& song = show.songs[static_cast<std::size_t>(i)];
            song.ltcTimecode = toText(ltc::Timecode{10, i, 0, 0});
            song.duration = 60;
        }
        admin_.state.importShow(std::move(show));
        computer_.audio.setDevices({{1, "Interface", {48'000.0, 2}}});
        admin_.state.ltcManager().setSelectedDeviceId(1);
        admin_.state.ltcManager().startCapturing();
    }

    /// Begins anew with the first song.
    void playAnHour() {
        admin_.state.setActiveShowId(std::nullopt);
        admin_.state.setActiveShowId(admin_.state.shows().front().id);
        admin_.state.jumpTo(0);
        playSilence(20);
        for (int minute = 1; minute < songCount; ++minute) {
            playSeconds(2, {10, minute, 0, 0});
            REQUIRE(admin_.state.activeSongIndex() == minute);
            playSilence(58);
            REQUIRE(station_.liveState()->activeSongIndex == minute);
        }
    }

private:
    void playSilence(int seconds) {
        for (int second = 0; second < seconds; ++second) {
            computer_.audio.deliver(std::vector(2, std::vector<float>(blockSize)));
            computer_.time.advance(1.0);
        }
    }

    void playSeconds(int seconds, ltc::Timecode timecode) {
        const ltc::FrameRate rate;
        ltc::LtcEncoder encoder(rate, 48'000);
        std::vector<float> signal;
        for (int frame = 0; frame < seconds * rate.counted; ++frame) {
            encoder.appendFrame(timecode, signal);
            timecode = next(timecode, rate);
        }
        for (std::size_t i = 0; i + blockSize <= signal.size(); i += blockSize) {
            const auto block = signal.begin() + static_cast<std::ptrdiff_t>(i);
            computer_.audio.deliver(
                {std::vector<float>(block, block + blockSize), std::vector<float>(blockSize)});
            computer_.time.advance(0.01);
        }
    }

    SimulatedPlatform computer_;
    std::ostream log_{nullptr};
    AdminProgram admin_{Platform{computer_.time, computer_.time, computer_.background,
                                 computer_.preferences, computer_.files, computer_.panels,
                                 computer_.audio, computer_.updates, computer_.computer,
                                 computer_.stayAwake, log_, computer_.journal}};
    ReceiverClient station_{computer_.network.addComputer("Plateau"), computer_.time,
                            computer_.background};
};

std::size_t allocatedBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

}  // namespace

// AddressSanitizer has an allocator of its own, which isn't counted here.
TEST_CASE("eight hours of a show leave no memory behind") {
    LongShow show;
    std::size_t before = 0;
    for (int hour = 1; hour <= 8; ++hour) {
        show.playAnHour();
        if (hour == 4) {  // until then the buffers that are kept grow to what they need
            before = allocatedBytes();
        }
    }
    CHECK(allocatedBytes() < before + 16'384);
}
