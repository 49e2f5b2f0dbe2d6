#include "platform/audio/InputDeviceList.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>

extern char** environ;

namespace tessivo {
namespace {

using Deadline = std::chrono::steady_clock::time_point;

struct Child {
    pid_t process = 0;
    int output = -1;  ///< reading end of what it prints
};

std::optional<Child> spawn(const std::string& program) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::string name = program;
    std::array<char*, 2> arguments{name.data(), nullptr};
    Child child{0, ends[0]};
    const int error =
        posix_spawn(&child.process, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (error != 0) {
        close(ends[0]);
        return std::nullopt;
    }
    return child;
}

// Reads up to the end of the output; false when that doesn't come in time.
bool readAll(int descriptor, Deadline deadline, std::string& text) {
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd waiting{descriptor, POLLIN, 0};
        const int ready = left.count() > 0 ? poll(&waiting, 1, static_cast<int>(left.count())) : 0;
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready <= 0) {
            return false;
        }
        std::array<char, 4096> bytes{};
        const ssize_t count = read(descriptor, bytes.data(), bytes.size());
        if (count <= 0) {
            return count == 0;
        }
        text.append(bytes.data(), static_cast<std::size_t>(count));
    }
}

}  // namespace

std::optional<InputDeviceList> listInputDevicesInChild(const std::string& lister) {
    const auto child = spawn(lister);
    if (!child) {
        return std::nullopt;
    }
    std::string text;
    const bool whole =
        readAll(child->output, std::chrono::steady_clock::now() + std::chrono::seconds(5), text);
    close(child->output);
    // Gone by itself once its output has ended; otherwise it hangs in a driver.
    kill(child->process, SIGKILL);
    while (waitpid(child->process, nullptr, 0) < 0 && errno == EINTR) {
    }
    return whole ? decodeInputDevices(text) : std::nullopt;
}

}  // namespace tessivo
