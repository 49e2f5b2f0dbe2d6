#pragma once

#include "import/XLSXWorkbook.h"
#include "platform/FileStore.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>

namespace tessivo {

enum class ReaderError {
    notAZip,  ///< no readable file, or no archive
    corrupt,  ///< an archive without a workbook
};

/// Reads spreadsheet files (.xlsx, ECMA-376). A sheet that can't be read is left out; a part whose
/// XML breaks off gives what came before. What a file can cost is bounded by its own size: one
/// under 10 MiB takes at most about a second and 256 MiB, which is enough for a million and a half
/// cells; what lies beyond isn't read.
class XLSXReader {
public:
    using Result = std::variant<XLSXWorkbook, ReaderError>;

    /// Files over this size, in bytes, aren't read; a run sheet has a thousandth of it.
    static constexpr std::size_t maximumFileSize = std::size_t{64} * 1024 * 1024;

    static Result read(FileStore& files, const FileLocation& location);
    /// The same for the content of a file.
    static Result read(std::string_view archive);
};

}  // namespace tessivo
