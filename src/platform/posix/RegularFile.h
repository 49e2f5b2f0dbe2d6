#pragma once

#include <cstddef>
#include <string>

namespace tessivo {

enum class FileReading { Done, Absent, Failed };

/// Reads the whole of a regular file into `bytes`. Fails on anything else that has a name (a
/// folder, a pipe, a device) without waiting for it, and on more than `maximumBytes`.
FileReading readRegularFile(const std::string& path, std::size_t maximumBytes, std::string& bytes);

}  // namespace tessivo
