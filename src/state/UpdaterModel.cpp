#include "state/UpdaterModel.h"

#include "platform/UpdateFeed.h"

#include <charconv>
#include <utility>
#include <vector>

namespace tessivo {
namespace {

std::optional<std::vector<unsigned>> versionNumbers(std::string_view version) {
    std::vector<unsigned> numbers;
    for (;;) {
        const std::string_view piece = version.substr(0, version.find('.'));
        unsigned number = 0;
        const char* end = piece.data() + piece.size();
        const auto [stop, error] = std::from_chars(piece.data(), end, number);
        if (error != std::errc() || stop != end) {
            return std::nullopt;
        }
        numbers.push_back(number);
        if (piece.size() == version.size()) {
            break;
        }
        version.remove_prefix(piece.size() + 1);
    }
    while (numbers.size() > 1 && numbers.back() == 0) {
        numbers.pop_back();
    }
    return numbers;
}

}  // namespace

bool isNewerVersion(std::string_view candidate, std::string_view current) {
    const auto candidateNumbers = versionNumbers(candidate);
    const auto currentNumbers = versionNumbers(current);
    return candidateNumbers && currentNumbers && *candidateNumbers > *currentNumbers;
}

void UpdaterModel::checkForUpdateInformation() {
    feed_.fetchLatestVersion(life_.guard([this](std::optional<std::string> version) {
        hasFailed_ = !version;
        if (version && !isNewerVersion(*version, TESSIVO_VERSION)) {
            version.reset();
        }
        callHandler(onUpdateAvailable, std::move(version));
    }));
}

}  // namespace tessivo
