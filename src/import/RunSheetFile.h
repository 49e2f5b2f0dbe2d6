#pragma once

#include "import/ReadingLimits.h"
#include "import/XLSXReader.h"
#include "import/XLSXWorkbook.h"
#include "platform/FileStore.h"

#include <string>
#include <vector>

namespace tessivo {

/// What reading a chosen file gave, and what its operator can do where that isn't much.
struct RunSheetFile {
    XLSXReader::Result result;
    std::string advice = {};  ///< in French; empty where there is none to give
};

/// Any thread.
RunSheetFile readRunSheet(FileStore& files, const FileLocation& location, WorkProgress& progress);

/// What to do about a file that gave no sheet, by what its bytes tell.
std::string adviceAbout(std::string_view file);

/// What of a workbook, and of its sheet in question, couldn't be read: a sentence each, in French.
std::vector<std::string> lossesOf(const XLSXWorkbook& workbook, const XLSXWorkbook::Sheet& sheet);

}  // namespace tessivo
