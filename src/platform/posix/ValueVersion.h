#pragma once

#include "platform/posix/FileDescriptor.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

/// One version of a value in a file of its own that isn't synced, so that writing it waits for no
/// disk: `value`.recent-N-C beside the value's file. N counts the versions and C is a checksum, so
/// that what a killed process or a power cut left torn is never taken for a value.
struct ValueVersion {
    std::string path;
    FileDescriptor file;
};

/// Writes a version to a new file, for the user only; nothing on failure. The number has to be one
/// that no version of the value has.
std::optional<ValueVersion> writeVersion(const std::string& valuePath, std::uint64_t number,
                                         std::string_view bytes);

/// The paths of a value's versions, the newest first.
std::vector<std::string> versionsOf(const std::string& valuePath);

std::uint64_t numberOfVersion(const std::string& path);

/// The bytes of a version; nothing when it isn't whole.
std::optional<std::string> readVersion(const std::string& path);

/// The permissions of the files of the preferences: nobody else has to know the shows.
constexpr unsigned ownerOnly = 0600;

}  // namespace tessivo
