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
    /// The arguments must outlive this; cell texts go into `pool`. What comes after the memory is
    /// used up is ignored, the row that used it up included.
    SheetParser(const SharedStringsParser& sharedStrings, TextPool& pool, Allowance& memory)
        : sharedStrings_(sharedStrings), pool_(pool), memory_(memory) {}

    /// The number of the last row that has ended.
    std::int64_t lastRow() const { return lastRow_; }

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
    void noteHiddenColumns(const XmlAttributes& attributes);
    void noteMergedCells(std::string_view range);

    const SharedStringsParser& sharedStrings_;
    TextPool& pool_;
    Allowance& memory_;
    XLSXWorkbook::Sheet sheet_;
    bool inRow_ = false;
    bool isRowHidden_ = false;
    std::int64_t rowIndex_ = 0;
    std::int64_t lastRow_ = 0;
    std::size_t firstCell_ = 0;  ///< of the row that isn't complete yet
    std::int64_t column_ = 0;    ///< of the current cell; 0 without a usable reference
    bool isSharedString_ = false;
    bool hasFormula_ = false;
    bool inValue_ = false;
    bool inInlineText_ = false;
    std::string currentValue_;
};

}  // namespace tessivo
