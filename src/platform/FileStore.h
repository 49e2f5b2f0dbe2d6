#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

/// A file chosen by the operator: its path in the computer's file system, UTF-8.
using FileLocation = std::string;

/// Whole files. Reading on any thread, writing on the main thread only.
class FileStore {
public:
    virtual ~FileStore() = default;

    /// The whole content; nothing when it can't be read or is longer than `maximumBytes`.
    virtual std::optional<std::string> read(const FileLocation& location,
                                            std::size_t maximumBytes) = 0;
    /// Whether there is a file that `read` gives nothing of because of its length.
    virtual bool isLongerThan(const FileLocation& location, std::size_t bytes) = 0;

    /// Writes beside the file and then puts the result in its place, so that a reader finds the
    /// old content or the new, never a part; false when that failed and the old content stands.
    virtual bool writeAtomically(const FileLocation& location, std::string_view bytes) = 0;
};

}  // namespace tessivo
