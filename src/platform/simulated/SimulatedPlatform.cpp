#include "platform/simulated/SimulatedPlatform.h"

namespace tessivo {

bool SimulatedPreferences::takeHold() {
    isHeld = isHeld || !isHeldElsewhere;
    return isHeld;
}

std::optional<std::string> SimulatedPreferences::data(std::string_view key) {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

void SimulatedPreferences::setData(std::string_view key, std::string_view bytes) {
    isUnwritten = isHeld && isFull;
    if (isHeld && !isFull) {
        ++writes;
        values[std::string(key)] = bytes;
    }
}

void SimulatedPreferences::remove(std::string_view key) {
    if (isHeld) {
        values.erase(std::string(key));
    }
}

bool SimulatedPreferences::setAside(std::string_view key) {
    const auto found = values.find(key);
    if (found != values.end() && !refusesToSetAside) {
        valuesSetAside.push_back(std::move(found->second));
        values.erase(found);
    }
    return !refusesToSetAside;
}

std::optional<std::string> SimulatedFiles::read(const FileLocation& location,
                                                std::size_t maximumBytes) {
    const auto found = contents.find(location);
    if (found == contents.end() || isLongerThan(location, maximumBytes)) {
        return std::nullopt;
    }
    return found->second;
}

bool SimulatedFiles::isLongerThan(const FileLocation& location, std::size_t bytes) {
    const auto found = contents.find(location);
    return found != contents.end() && found->second.size() > bytes;
}

bool SimulatedFiles::writeAtomically(const FileLocation& location, std::string_view bytes) {
    if (isFull) {
        return false;
    }
    contents[location] = bytes;
    return true;
}

std::optional<FileLocation> SimulatedPanels::chooseSaveLocation(const SaveRequest& request) {
    saveRequests.push_back(request);
    return nextAnswer();
}

std::optional<FileLocation> SimulatedPanels::chooseFileToOpen(const OpenRequest& request) {
    openRequests.push_back(request);
    return nextAnswer();
}

std::optional<FileLocation> SimulatedPanels::nextAnswer() {
    if (answers.empty()) {
        return std::nullopt;
    }
    FileLocation answer = std::move(answers.front());
    answers.erase(answers.begin());
    return answer;
}

void SimulatedUpdateFeed::fetchLatestVersion(Answer answer) {
    mainQueue_.post([this, answer = std::move(answer)] { answer(latestVersion); });
}

}  // namespace tessivo
