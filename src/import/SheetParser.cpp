#include "import/SheetParser.h"

#include "base/Text.h"
#include "import/ColumnLetters.h"

#include <algorithm>
#include <cassert>
#include <deque>
#include <functional>
#include <iterator>

namespace tessivo {
namespace {

/// Sorts what stands from `start` on by `key`, and keeps of equal ones the last: in a file, what
/// comes later replaces what came before.
template <typename Item, typename Key>
void sortKeepingLast(std::deque<Item>& items, std::size_t start, Key key) {
    const auto first = items.begin() + static_cast<std::ptrdiff_t>(start);
    if (std::ranges::adjacent_find(first, items.end(), std::greater_equal{}, key) == items.end()) {
        return;  // as every usual writer leaves it
    }
    std::ranges::stable_sort(first, items.end(), {}, key);
    const auto hasSameKey = [key](const Item& later, const Item& earlier) {
        return std::invoke(key, later) == std::invoke(key, earlier);
    };
    const auto kept = std::unique(items.rbegin(), std::make_reverse_iterator(first), hasSameKey);
    items.erase(first, kept.base());
}

}  // namespace

XLSXWorkbook::Sheet SheetParser::takeSheet() && {
    assert(firstCell_ <= sheet_.cells.size());
    sheet_.cells.resize(firstCell_);  // a row that broke off doesn't count
    sortKeepingLast(sheet_.rows, 0, &XLSXWorkbook::Row::index);
    return std::move(sheet_);
}

void SheetParser::startElement(std::string_view name, const XmlAttributes& attributes) {
    if (name == "c") {
        startCell(attributes);
    } else if (name == "v") {
        inValue_ = true;
    } else if (name == "t") {
        inInlineText_ = true;
    } else if (name == "row") {
        startRow(attributes);
    }
}

void SheetParser::characters(std::string_view text) {
    if (inValue_ || inInlineText_) {
        TextPool::append(currentValue_, text);
    }
}

void SheetParser::endElement(std::string_view name) {
    if (name == "c") {
        finishCell();
    } else if (name == "v") {
        inValue_ = false;
    } else if (name == "t") {
        inInlineText_ = false;
    } else if (name == "row") {
        finishRow();
    }
}

void SheetParser::startRow(const XmlAttributes& attributes) {
    inRow_ = true;
    rowIndex_ = readInteger(attributes.find("r").value_or("")).value_or(0);
    sheet_.cells.resize(firstCell_);
}

void SheetParser::startCell(const XmlAttributes& attributes) {
    column_ = columnIndex(attributes.find("r").value_or(""));
    isSharedString_ = attributes.find("t") == "s";
    currentValue_.clear();
}

void SheetParser::finishCell() {
    if (!inRow_ || column_ < 1) {
        return;
    }
    const TextPool::Span span = resolvedValue();
    if (span.length > 0 && memory_.spend(sizeof(XLSXWorkbook::Cell))) {
        sheet_.cells.push_back({column_, span});
    }
}

TextPool::Span SheetParser::resolvedValue() {
    if (isSharedString_) {
        const auto index = readInteger(currentValue_);
        const auto shared = index ? sharedStrings_.at(*index) : std::nullopt;
        if (shared) {
            return *shared;
        }
    }
    return pool_.add(currentValue_, memory_);
}

void SheetParser::finishRow() {
    if (inRow_ && !memory_.isExhausted()) {
        lastRow_ = rowIndex_;
    }
    if (inRow_ && sheet_.cells.size() > firstCell_ && memory_.spend(sizeof(XLSXWorkbook::Row))) {
        sortKeepingLast(sheet_.cells, firstCell_, &XLSXWorkbook::Cell::column);
        sheet_.rows.push_back({rowIndex_, static_cast<std::uint32_t>(firstCell_),
                               static_cast<std::uint32_t>(sheet_.cells.size())});
        sheet_.maxRow = std::max(sheet_.maxRow, rowIndex_);
        sheet_.maxCol = std::max(sheet_.maxCol, sheet_.cells.back().column);
        firstCell_ = sheet_.cells.size();
    }
    inRow_ = false;
}

}  // namespace tessivo
