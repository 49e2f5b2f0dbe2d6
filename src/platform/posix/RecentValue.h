#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

/// The newest version of a value in a file that isn't synced, so that writing it waits for no disk.
///
/// Two files take turns, `path`.recent-0 and -1, each with the number of its version and a
/// checksum: the version before stays whole while the next is written, and a version that a killed
/// process or a power cut left torn is never taken for a value.
class RecentValue {
public:
    struct Version {
        std::uint64_t number = 0;
        std::string bytes;
    };

    explicit RecentValue(std::string path);

    /// The newest whole version, if any.
    std::optional<Version> read() const;

    /// Gives the new version's number; nothing on failure, which leaves the version before.
    std::optional<std::uint64_t> write(std::string_view bytes);

    /// Deletes this version and those before it.
    void forget(std::uint64_t number);

private:
    std::string pathOf(std::uint64_t number) const;

    std::string path_;
    std::uint64_t newest_ = 0;
};

}  // namespace tessivo
