// Writes a run of linear timecode as a .wav file, made by libltc, an encoder independent of ours.

#include <ltc.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string_view>
#include <vector>

namespace {

struct Request {
    SMPTETimecode start{};
    double framesPerSecond = 25;
    double seconds = 10;
    double samplesPerSecond = 48000;
    const char* path = nullptr;
};

bool readTimecode(const char* text, SMPTETimecode& timecode) {
    unsigned hours = 0, minutes = 0, seconds = 0, frames = 0;
    if (std::sscanf(text, "%2u:%2u:%2u:%2u", &hours, &minutes, &seconds, &frames) != 4)
        return false;
    timecode.hours = static_cast<unsigned char>(hours);
    timecode.mins = static_cast<unsigned char>(minutes);
    timecode.secs = static_cast<unsigned char>(seconds);
    timecode.frame = static_cast<unsigned char>(frames);
    return true;
}

LTC_TV_STANDARD standardFor(double framesPerSecond) {
    if (framesPerSecond == 25)
        return LTC_TV_625_50;
    return framesPerSecond == 24 ? LTC_TV_FILM_24 : LTC_TV_525_60;
}

/// libltc gives 8-bit samples around 128; here they become 16 bits around 0.
std::vector<std::int16_t> encode(const Request& request) {
    const std::unique_ptr<LTCEncoder, decltype(&ltc_encoder_free)> encoder(
        ltc_encoder_create(request.samplesPerSecond, request.framesPerSecond,
                           standardFor(request.framesPerSecond), 0),
        &ltc_encoder_free);
    SMPTETimecode timecode = request.start;
    ltc_encoder_set_timecode(encoder.get(), &timecode);
    std::vector<std::int16_t> samples;
    const auto frames = static_cast<long>(request.seconds * request.framesPerSecond);
    for (long frame = 0; frame < frames; ++frame) {
        ltc_encoder_encode_frame(encoder.get());
        ltcsnd_sample_t* encoded = nullptr;
        const int count = ltc_encoder_get_bufferptr(encoder.get(), &encoded, 1);
        for (int index = 0; index < count; ++index)
            samples.push_back(static_cast<std::int16_t>((encoded[index] - 128) * 256));
        ltc_encoder_inc_timecode(encoder.get());
    }
    return samples;
}

void writeLittleEndian(std::ostream& out, std::uint32_t value, int bytes) {
    for (int index = 0; index < bytes; ++index)
        out.put(static_cast<char>(value >> (8 * index) & 0xff));
}

/// The canonical 44-byte header of a mono PCM file ("RIFF WAVE", 1991), then the samples.
bool writeWav(const char* path, std::uint32_t samplesPerSecond,
              const std::vector<std::int16_t>& samples) {
    std::ofstream out(path, std::ios::binary);
    const auto bytes = static_cast<std::uint32_t>(samples.size() * sizeof(std::int16_t));
    out << "RIFF";
    writeLittleEndian(out, 36 + bytes, 4);
    out << "WAVEfmt ";
    writeLittleEndian(out, 16, 4);                    // size of this chunk
    writeLittleEndian(out, 1, 2);                     // PCM
    writeLittleEndian(out, 1, 2);                     // channels
    writeLittleEndian(out, samplesPerSecond, 4);      // samples per second
    writeLittleEndian(out, samplesPerSecond * 2, 4);  // bytes per second
    writeLittleEndian(out, 2, 2);                     // bytes per sample of all channels
    writeLittleEndian(out, 16, 2);                    // bits per sample
    out << "data";
    writeLittleEndian(out, bytes, 4);
    for (const std::int16_t sample : samples)
        writeLittleEndian(out, static_cast<std::uint16_t>(sample), 2);
    return out.flush().good();
}

bool readArguments(int count, char** arguments, Request& request) {
    if (count != 6 || !readTimecode(arguments[1], request.start))
        return false;
    request.framesPerSecond = std::atof(arguments[2]);
    request.seconds = std::atof(arguments[3]);
    request.samplesPerSecond = std::atof(arguments[4]);
    request.path = arguments[5];
    return request.framesPerSecond > 0 && request.seconds > 0 && request.samplesPerSecond >= 8000;
}

}  // namespace

int main(int count, char** arguments) {
    Request request;
    if (!readArguments(count, arguments, request)) {
        std::fprintf(stderr, "usage: libltc_wav HH:MM:SS:FF FPS SECONDS SAMPLE_RATE OUT.wav\n");
        return 2;
    }
    if (!writeWav(request.path, static_cast<std::uint32_t>(request.samplesPerSecond),
                  encode(request))) {
        std::fprintf(stderr, "libltc_wav: can't write %s\n", request.path);
        return 1;
    }
    return 0;
}
