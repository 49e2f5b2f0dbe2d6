#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace tessivo {

enum class FileReading { Done, Absent, Failed };

/// Reads the whole of a regular file into `bytes`. Fails on anything else that has a name (a
/// folder, a pipe, a device) without waiting for it, and on more than `maximumBytes`.
FileReading readRegularFile(const std::string& path, std::size_t maximumBytes, std::string& bytes);

/// The permissions of the files of the preferences: nobody else has to know the shows.
constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

/// Opens a file with what it has, or makes it, for the user only; negative on failure.
int openToWrite(const std::string& path);

/// Writes all the bytes from the file's present place on; false on an error.
bool writeAll(int file, std::string_view bytes);

}  // namespace tessivo
