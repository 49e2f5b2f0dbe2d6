#pragma once

#include "import/ReadingLimits.h"
#include "import/XLSXWorkbook.h"

#include <cstddef>
#include <string_view>
#include <variant>

namespace tessivo {

enum class ReaderError {
    notAZip,  ///< no archive
    corrupt,  ///< an archive without a workbook
};

/// Reads spreadsheet files (.xlsx, ECMA-376). A sheet that can't be read is left out; a part whose
/// XML breaks off gives what came before. What a file can cost is bounded by `ReadingLimits`; what
/// lies beyond isn't read, and the workbook tells so. Small sheets are read before large ones,
/// which therefore take nothing from them.
class XLSXReader {
public:
    using Result = std::variant<XLSXWorkbook, ReaderError>;

    /// Files over this size, in bytes, aren't read; a run sheet has a thousandth of it.
    static constexpr std::size_t maximumFileSize = std::size_t{64} * 1024 * 1024;
    /// A workbook with more sheets loses those beyond; each costs a look-up and a parser.
    static constexpr std::size_t maximumSheets = 10'000;

    /// Reads the content of a file. Any thread.
    static Result read(std::string_view archive, WorkProgress& progress, ReadingLimits limits = {});
};

}  // namespace tessivo
