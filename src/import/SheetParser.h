#pragma once

#include "import/WorkbookParts.h"
#include "import/XLSXWorkbook.h"
#include "import/XmlParser.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessivo {

/// A worksheet part (ECMA-376-1, clause 18.3): collects its cells as they are stored. Neither
/// number formats nor formulas are interpreted, so a date is a day number.
class SheetParser : public XmlEvents {
public:
    /// The arguments must outlive this; cell texts go into `pool`.
    SheetParser(const SharedStringsParser& sharedStrings, TextPool& pool)
        : sharedStrings_(sharedStrings), pool_(pool) {}

    /// The rows that were complete, once the part is parsed; the sheet still lacks name and texts.
    XLSXWorkbook::Sheet takeSheet() &&;

    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    void characters(std::string_view text) override;
    void endElement(std::string_view name) override;

private:
    void startRow(const XmlAttributes& attributes);
    void startCell(const XmlAttributes& attributes);
    void finishCell();
    void finishRow();
    TextPool::Span resolvedValue();

    const SharedStringsParser& sharedStrings_;
    TextPool& pool_;
    XLSXWorkbook::Sheet sheet_;
    bool inRow_ = false;
    std::int64_t rowIndex_ = 0;
    std::size_t firstCell_ = 0;  ///< of the row that isn't complete yet
    std::int64_t column_ = 0;    ///< of the current cell; 0 without a usable reference
    bool isSharedString_ = false;
    bool inValue_ = false;
    bool inInlineText_ = false;
    std::string currentValue_;
};

}  // namespace tessivo
