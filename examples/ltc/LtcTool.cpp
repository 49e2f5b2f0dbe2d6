#include "ltc/LtcTool.h"

#include "ltc/LtcEncoder.h"
#include "ltc/WavWriter.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

namespace tessivo::ltc {

namespace {

constexpr std::string_view help =
    R"(Usage: tessivo-ltc --start HH:MM:SS:FF --rate RATE [OPTION VALUE]... FILE.wav

Writes linear timecode (SMPTE ST 12-1) as a mono .wav file of 16-bit PCM.

  --start HH:MM:SS:FF  timecode of the first frame
  --rate RATE          24, 25, 29.97df (drop-frame), 29.97ndf or 30
  --length SECONDS     how long, up to a day; whole frames are written (60)
  --sample-rate HZ     8000 to 768000 (48000)
  --level DBFS         peak of the timecode, -90 to 0 (-3)
  --noise DBFS         effective value of added white noise, -120 to 0 (no noise)
  --help               show this text

Exit codes: 0 written, 1 the file could not be written, 2 wrong arguments.
)";

/// What to write.
struct LtcFileRequest {
    std::string path;
    FrameRate rate;
    Timecode start;
    double seconds = 60.0;        ///< more than 0; whole frames are written, as many as it takes
    int sampleRate = 48'000;      ///< 8 000 to 768 000 samples per second
    double levelDecibels = -3.0;  ///< peak of the timecode, dBFS, at most 0
    /// Effective value of the white noise that is added, dBFS; absent: none.
    std::optional<double> noiseDecibels;
};

struct HelpWanted {};
struct UsageError {
    std::string message;
};
using Parsed = std::variant<LtcFileRequest, HelpWanted, UsageError>;

/// A whole text as a finite number within its bounds.
std::optional<double> parseNumber(std::string_view text, double lowest, double highest) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc{} && end == text.data() + text.size();
    if (!whole || !(value >= lowest && value <= highest)) {
        return std::nullopt;
    }
    return value;
}

/// Reads arguments one after the other. The start is kept as text until the rate is known.
class Parser {
public:
    Parsed parse(std::span<const std::string_view> arguments) {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            const std::string_view name = arguments[i];
            if (name == "--help") {
                return HelpWanted{};
            }
            if (!name.starts_with("-")) {
                takePath(name);
            } else if (i + 1 < arguments.size()) {
                takeOption(name, arguments[++i]);
            } else {
                complain(std::string(name) + " needs a value");
            }
        }
        return finish();
    }

private:
    void complain(std::string message) {
        if (error_.empty()) {
            error_ = std::move(message);
        }
    }

    void takePath(std::string_view path) {
        if (!request_.path.empty()) {
            complain("more than one file named");
        }
        request_.path = path;
    }

    void takeOption(std::string_view name, std::string_view value) {
        if (name == "--start") {
            startText_ = value;
        } else if (name == "--rate") {
            rate_ = parseFrameRate(value);
            if (!rate_) {
                complain("--rate must be 24, 25, 29.97df, 29.97ndf or 30");
            }
        } else if (name == "--length") {
            request_.seconds = number(name, value, 0.001, 86'400.0);
        } else if (name == "--sample-rate") {
            const double rate = number(name, value, 8'000.0, 768'000.0);
            request_.sampleRate = static_cast<int>(rate);
            if (rate != std::floor(rate)) {
                complain("--sample-rate must be a whole number");
            }
        } else if (name == "--level") {
            request_.levelDecibels = number(name, value, -90.0, 0.0);
        } else if (name == "--noise") {
            request_.noiseDecibels = number(name, value, -120.0, 0.0);
        } else {
            complain("unknown option " + std::string(name));
        }
    }

    double number(std::string_view name, std::string_view text, double lowest, double highest) {
        const std::optional<double> value = parseNumber(text, lowest, highest);
        if (!value) {
            complain(std::string(name) + " doesn't take '" + std::string(text) + "'");
        }
        return value.value_or(lowest);
    }

    Parsed finish() {
        if (!rate_) {
            complain("--rate is missing");
        } else if (!startText_) {
            complain("--start is missing");
        } else if (const auto start = parseTimecode(*startText_, *rate_)) {
            request_.start = *start;
            request_.rate = *rate_;
        } else {
            complain("--start '" + std::string(*startText_) + "' isn't a timecode at this rate");
        }
        if (request_.path.empty()) {
            complain("no file named");
        }
        if (!error_.empty()) {
            return UsageError{error_};
        }
        return request_;
    }

    LtcFileRequest request_;
    std::optional<FrameRate> rate_;
    std::optional<std::string_view> startText_;
    std::string error_;  // the first one
};

/// White noise, roughly Gaussian, the same in every run: the sum of twelve even distributions.
class NoiseSource {
public:
    float next() {
        float sum = -6.0F;
        for (int i = 0; i < 12; ++i) {
            state_ = state_ * 6'364'136'223'846'793'005U + 1'442'695'040'888'963'407U;
            sum += static_cast<float>(state_ >> 40) / 16'777'216.0F;
        }
        return sum;
    }

private:
    std::uint64_t state_ = 1;
};

float amplitude(double decibels) {
    return static_cast<float>(std::pow(10.0, decibels / 20.0));
}

std::int64_t frameCountOf(const LtcFileRequest& request) {
    const FrameRate& rate = request.rate;
    // A hair less, so that 0.04 seconds are one frame of 25 and not two.
    const double frames = request.seconds * rate.numerator / rate.denominator - 1e-6;
    return static_cast<std::int64_t>(std::ceil(frames));
}

/// The samples of `frames` whole frames and the closing cell.
std::int64_t sampleCountOf(const LtcFileRequest& request, std::int64_t frames) {
    const double cells = static_cast<double>(frames) * 80.0 + 1.0;
    const double samples =
        cells * request.sampleRate * request.rate.denominator / (80.0 * request.rate.numerator);
    return static_cast<std::int64_t>(std::ceil(samples - 0.5));
}

bool write(const LtcFileRequest& request) {
    const std::int64_t frames = frameCountOf(request);
    WavWriter wav(request.path, request.sampleRate, sampleCountOf(request, frames));
    LtcEncoder encoder(request.rate, request.sampleRate);
    NoiseSource noise;
    const float level = amplitude(request.levelDecibels);
    const float noiseLevel = request.noiseDecibels ? amplitude(*request.noiseDecibels) : 0.0F;
    Timecode timecode = request.start;
    std::vector<float> samples;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        samples.clear();
        encoder.appendFrame(timecode, samples);
        if (frame == frames - 1) {
            encoder.appendClosingCell(samples);
        }
        for (float& sample : samples) {
            sample = sample * level + (request.noiseDecibels ? noise.next() * noiseLevel : 0.0F);
        }
        if (!wav.append(samples)) {
            return false;
        }
        timecode = next(timecode, request.rate);
    }
    return wav.finish();
}

}  // namespace

ExitCode runLtcTool(std::span<const std::string_view> arguments, std::ostream& output,
                    std::ostream& errors) {
    const Parsed parsed = Parser().parse(arguments);
    if (std::holds_alternative<HelpWanted>(parsed)) {
        output << help;
        return ExitCode::success;
    }
    if (const auto* usage = std::get_if<UsageError>(&parsed)) {
        errors << "tessivo-ltc: " << usage->message << "; --help tells more\n";
        return ExitCode::wrongUsage;
    }
    const auto& request = std::get<LtcFileRequest>(parsed);
    if (sampleCountOf(request, frameCountOf(request)) > WavWriter::maximumSampleCount) {
        errors << "tessivo-ltc: a .wav file can't be that long at this sample rate\n";
        return ExitCode::wrongUsage;
    }
    if (!write(request)) {
        errors << "tessivo-ltc: can't write " << request.path << '\n';
        return ExitCode::writeFailed;
    }
    return ExitCode::success;
}

}  // namespace tessivo::ltc
