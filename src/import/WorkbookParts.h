#pragma once

#include "import/ReadingLimits.h"
#include "import/TextPool.h"
#include "import/XmlParser.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

/// The small parts of a workbook (ECMA-376-1, clauses 18.2 and 18.4; ECMA-376-2, clause 9.3).

/// xl/sharedStrings.xml: the texts that cells name by their position.
class SharedStringsParser : public XmlEvents {
public:
    /// The arguments must outlive this.
    SharedStringsParser(TextPool& pool, Allowance& memory) : pool_(pool), memory_(memory) {}

    /// The text at a position; none when there are fewer.
    std::optional<TextPool::Span> at(std::int64_t index) const;
    void clear() { texts_.clear(); }

    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    void characters(std::string_view text) override;
    void endElement(std::string_view name) override;

private:
    TextPool& pool_;
    Allowance& memory_;
    std::deque<TextPool::Span> texts_;
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
    explicit WorkbookParser(Allowance& memory) : memory_(memory) {}

    std::vector<SheetRef> refs;

    void startElement(std::string_view name, const XmlAttributes& attributes) override;

private:
    Allowance& memory_;
};

/// xl/_rels/workbook.xml.rels: where the worksheets are, by relationship id.
class RelsParser : public XmlEvents {
public:
    explicit RelsParser(Allowance& memory) : memory_(memory) {}

    std::map<std::string, std::string, std::less<>> targets;

    void startElement(std::string_view name, const XmlAttributes& attributes) override;

private:
    Allowance& memory_;
};

}  // namespace tessivo
