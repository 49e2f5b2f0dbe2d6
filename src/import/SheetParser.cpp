#include "import/SheetParser.h"

#include "base/Text.h"
#include "import/ColumnLetters.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <deque>
#include <functional>
#include <iterator>
#include <optional>
#include <vector>

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

bool isTrue(std::optional<std::string_view> attribute) {
    return attribute == "1" || attribute == "true";
}

/// Enough to tell of what looks odd; nobody goes through more.
template <typename Item>
void note(std::vector<Item>& items, Item item) {
    constexpr std::size_t maximumNoted = 10'000;
    if (items.size() < maximumNoted) {
        items.push_back(item);
    }
}

/// The number after a cell reference's letters; 0 when it has none.
std::int64_t rowOf(std::string_view reference) {
    const std::size_t digits = std::min(reference.find_first_of("0123456789"), reference.size());
    return readInteger(reference.substr(digits)).value_or(0);
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
    } else if (name == "f") {
        hasFormula_ = true;
    } else if (name == "mergeCell") {
        noteMergedCells(attributes.find("ref").value_or(""));
    } else if (name == "col" && isTrue(attributes.find("hidden"))) {
        noteHiddenColumns(attributes);
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
    isRowHidden_ = isTrue(attributes.find("hidden"));
    sheet_.cells.resize(firstCell_);
}

void SheetParser::startCell(const XmlAttributes& attributes) {
    column_ = columnIndex(attributes.find("r").value_or(""));
    isSharedString_ = attributes.find("t") == "s";
    hasFormula_ = false;
    currentValue_.clear();
}

void SheetParser::finishCell() {
    if (!inRow_ || column_ < 1) {
        return;
    }
    const TextPool::Span span = resolvedValue();
    if (span.length > 0 && memory_.spend(sizeof(XLSXWorkbook::Cell))) {
        sheet_.cells.push_back({column_, span});
    } else if (hasFormula_ && currentValue_.empty()) {
        note(sheet_.looks.unresolvedFormulas, {rowIndex_, column_});
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

void SheetParser::noteHiddenColumns(const XmlAttributes& attributes) {
    note(sheet_.looks.hiddenColumns,
         {readInteger(attributes.find("min").value_or("")).value_or(0),
          readInteger(attributes.find("max").value_or("")).value_or(0)});
}

void SheetParser::noteMergedCells(std::string_view range) {
    const std::size_t colon = range.find(':');
    if (colon != std::string_view::npos) {
        const XLSXWorkbook::MergedCells cells{columnIndex(range), rowOf(range.substr(0, colon)),
                                              rowOf(range.substr(colon + 1))};
        if (cells.firstRow < cells.lastRow) {
            note(sheet_.looks.mergedCells, cells);
        }
    }
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
        if (isRowHidden_) {
            note(sheet_.looks.hiddenRows, rowIndex_);
        }
    }
    inRow_ = false;
}

}  // namespace tessivo
