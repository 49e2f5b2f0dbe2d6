#pragma once

#include "import/XmlParser.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessivo {

/// The small parts of a workbook (ECMA-376-1, clauses 18.2 and 18.4; ECMA-376-2, clause 9.3).

/// A workbook with more sheets loses those beyond; each costs a look-up and a parser.
constexpr std::size_t maximumSheets = 10'000;

/// Collects the texts of a workbook end to end in one string, so that a cell needs only a position.
class TextPool {
public:
    struct Span {
        std::uint32_t offset = 0;
        std::uint32_t length = 0;
    };

    /// Beyond `capacity` bytes, up to 4 GiB, texts are dropped: no more can have been written in
    /// that many bytes of XML, but elements nested in ways that no writer nests them repeat texts.
    explicit TextPool(std::size_t capacity) : capacity_(capacity) {}

    Span add(std::string_view text);
    /// Adds a piece to a text that is still being read, unless it's too long for the pool already.
    void append(std::string& text, std::string_view piece) const;
    std::string takeBytes() && { return std::move(bytes_); }

private:
    std::size_t capacity_;
    std::string bytes_;
};

/// xl/sharedStrings.xml: the texts that cells name by their position.
class SharedStringsParser : public XmlEvents {
public:
    /// `pool` must be empty and outlive this.
    explicit SharedStringsParser(TextPool& pool) : pool_(pool) {}

    /// The text at a position; none when there are fewer.
    std::optional<TextPool::Span> at(std::int64_t index) const;
    void clear() { ends_.clear(); }

    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    void characters(std::string_view text) override;
    void endElement(std::string_view name) override;

private:
    TextPool& pool_;
    std::vector<std::uint32_t> ends_;  ///< each text begins in the pool where the one before ends
    std::string current_;
    bool inText_ = false;
};

/// One sheet as the workbook lists it.
struct SheetRef {
    std::string name;
    std::string relId;
};

/// xl/workbook.xml: the sheets in their order, hidden ones included.
class WorkbookParser : public XmlEvents {
public:
    std::vector<SheetRef> refs;

    void startElement(std::string_view name, const XmlAttributes& attributes) override;
};

/// xl/_rels/workbook.xml.rels: where the worksheets are, by relationship id.
class RelsParser : public XmlEvents {
public:
    std::map<std::string, std::string, std::less<>> targets;

    void startElement(std::string_view name, const XmlAttributes& attributes) override;
};

}  // namespace tessivo
