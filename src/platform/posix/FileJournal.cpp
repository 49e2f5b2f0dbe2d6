#include "platform/posix/FileJournal.h"

#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <ostream>
#include <vector>

namespace tessivo {
namespace {

/// From 1970 to 2001, the beginning of `Instant`.
constexpr double secondsBefore2001 = 978'307'200.0;

std::tm localTime(Instant at) {
    const auto seconds =
        static_cast<std::time_t>(std::floor(at.secondsSince2001 + secondsBefore2001));
    std::tm time{};
    ::localtime_r(&seconds, &time);
    return time;
}

std::string dayOf(const std::tm& time) {
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &time)};
}

std::string timeOf(const std::tm& time) {
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%H:%M:%S", &time)};
}

bool isNameOfDay(const std::string& name) {
    constexpr std::string_view form = "0000-00-00.txt";
    return std::ranges::equal(name, form, [](char letter, char wanted) {
        return wanted == '0' ? letter >= '0' && letter <= '9' : letter == wanted;
    });
}

}  // namespace

void FileJournal::write(Instant at, std::string_view line) {
    const std::tm time = localTime(at);
    std::string path = folder_ + "/" + dayOf(time) + ".txt";
    if (path != file_) {
        file_ = std::move(path);
        makeRoom();
    }
    std::string text = timeOf(time).append("  ").append(line);
    std::ranges::replace_if(
        text, [](char letter) { return static_cast<unsigned char>(letter) < ' '; }, ' ');
    text += '\n';
    bool isWritten = append(text);
    if (!isWritten) {
        makeRoom();  // somebody may have tidied up meanwhile
        isWritten = append(text);
    }
    if (!isWritten && !hasToldFailure_) {
        hasToldFailure_ = true;
        trouble_ << "Le journal ne peut pas être écrit : " << file_ << std::endl;
    }
}

bool FileJournal::append(const std::string& text) const {
    // Opened for each line: who moves or removes the file gets what follows. Without O_NONBLOCK a
    // pipe of that name would be waited for.
    const FileDescriptor file(
        ::open(file_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW,
               S_IRUSR | S_IWUSR));
    return file.isOpen() &&
           ::write(file.value(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

/// Makes the folder, and removes the oldest files but for the one to be written.
void FileJournal::makeRoom() const {
    std::error_code error;
    if (std::filesystem::create_directories(folder_, error)) {
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, error);
    }
    std::vector<std::string> others;
    std::filesystem::directory_iterator entry(folder_, error);
    for (; !error && entry != end(entry); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (isNameOfDay(name) && folder_ + "/" + name != file_) {
            others.push_back(entry->path().string());
        }
    }
    std::ranges::sort(others);
    for (std::size_t i = 0; i + filesKept <= others.size(); ++i) {
        std::filesystem::remove(others[i], error);
    }
}

}  // namespace tessivo
