#include "import/XLSXReader.h"

#include "import/SheetParser.h"
#include "import/WorkbookParts.h"
#include "import/XmlParser.h"
#include "import/ZipArchive.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tessivo {
namespace {

/// Finds the parts of a workbook by name and parses them within its limits.
class PartReader {
public:
    PartReader(std::string_view archive, ReadingLimits& limits, WorkProgress& progress)
        : archive_(archive),
          limits_(limits),
          progress_(progress),
          entries_(parseCentralDirectory(archive)) {
        for (const ZipEntry& entry : entries_) {
            byName_.emplace(entry.name, &entry);  // the first of a name stays
        }
    }

    bool isEmpty() const { return entries_.empty(); }

    /// How many bytes the part takes in the archive; 0 when there is none.
    std::size_t storedSize(std::string_view path) const {
        const auto found = byName_.find(path);
        const auto stored =
            found == byName_.end() ? std::nullopt : storedBytes(*found->second, archive_);
        return stored ? stored->size() : 0;
    }

    /// Reports progress until these parts are read, as far as their sizes can be believed.
    void expect(std::string_view path) {
        const auto found = byName_.find(path);
        expected_ += found == byName_.end() ? 0.0 : found->second->uncompressedSize;
    }

    /// False when there is no such part or it can't be extracted; what `events` got is then void.
    /// A part that exceeds the limits ends there.
    bool parse(std::string_view path, XmlEvents& events) {
        const auto found = byName_.find(path);
        if (found == byName_.end() || limits_.areExhausted()) {
            return false;
        }
        // Only what is there costs anything: a false size is this part's fault alone.
        if (!limits_.work.spend(storedSize(path))) {
            return false;
        }
        XmlParser parser(events);
        const bool extracted = extract(*found->second, archive_, [&](std::string_view piece) {
            const std::size_t before = parser.extraWork();
            parser.feed(piece);
            read_ += static_cast<double>(piece.size());
            progress_.done = expected_ > 0.0 ? std::min(read_ / expected_, 1.0) : 0.0;
            return limits_.work.spend(piece.size() + parser.extraWork() - before) &&
                   !limits_.areExhausted() && !progress_.isCancelled;
        });
        parser.finish();
        return extracted;
    }

private:
    std::string_view archive_;
    ReadingLimits& limits_;
    WorkProgress& progress_;
    std::vector<ZipEntry> entries_;
    std::unordered_map<std::string_view, const ZipEntry*> byName_;
    double expected_ = 0.0;
    double read_ = 0.0;
};

/// The path of each sheet's part, in the workbook's order; empty without one.
std::vector<std::string> pathsOf(const WorkbookParser& workbook, const RelsParser& relationships) {
    std::vector<std::string> paths;
    for (const SheetRef& ref : workbook.refs) {
        const auto target = relationships.targets.find(ref.relId);
        const bool isFound =
            target != relationships.targets.end() && paths.size() < XLSXReader::maximumSheets;
        paths.push_back(isFound ? "xl/" + target->second : std::string());
    }
    return paths;
}

/// The positions of the sheets from the smallest to the largest.
std::vector<std::size_t> smallestFirst(const std::vector<std::string>& paths,
                                       const PartReader& parts) {
    std::vector<std::size_t> sizes(paths.size());
    std::ranges::transform(paths, sizes.begin(),
                           [&](const std::string& path) { return parts.storedSize(path); });
    std::vector<std::size_t> order(paths.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](std::size_t sheet) { return sizes[sheet]; });
    return order;
}

/// The sheets of the workbook, without their texts.
XLSXWorkbook readSheets(PartReader& parts, const WorkbookParser& workbook,
                        const RelsParser& relationships, const SharedStringsParser& sharedStrings,
                        TextPool& pool, ReadingLimits& limits) {
    const std::vector<std::string> paths = pathsOf(workbook, relationships);
    std::vector<std::optional<XLSXWorkbook::Sheet>> sheets(paths.size());
    std::ranges::for_each(paths, [&](const std::string& path) { parts.expect(path); });
    for (const std::size_t position : smallestFirst(paths, parts)) {
        SheetParser parser(sharedStrings, pool, limits.memory);
        if (parts.parse(paths[position], parser)) {
            const std::int64_t lastRow = parser.lastRow();
            sheets[position] = std::move(parser).takeSheet();
            if (limits.areExhausted()) {
                sheets[position]->lastRowRead = lastRow;
            }
        }
    }
    XLSXWorkbook result;
    for (std::size_t position = 0; position < sheets.size(); ++position) {
        if (sheets[position]) {
            result.sheets.push_back(std::move(*sheets[position]));
            result.sheets.back().name = workbook.refs[position].name;
        } else {
            result.unreadSheets.push_back(workbook.refs[position].name);
        }
    }
    return result;
}

}  // namespace

XLSXReader::Result XLSXReader::read(std::string_view archive, WorkProgress& progress,
                                    ReadingLimits limits) {
    PartReader parts(archive, limits, progress);
    if (parts.isEmpty()) {
        return ReaderError::notAZip;
    }
    const auto pool = std::make_shared<TextPool>();
    WorkbookParser workbookPart(limits.memory);
    RelsParser relationships(limits.memory);
    if (!parts.parse("xl/workbook.xml", workbookPart) ||
        !parts.parse("xl/_rels/workbook.xml.rels", relationships)) {
        return ReaderError::corrupt;
    }
    const std::size_t half = limits.memory.left() / 2;  // the rest is for the cells
    Allowance forStrings(half);
    SharedStringsParser sharedStrings(*pool, forStrings);
    parts.expect("xl/sharedStrings.xml");
    if (!parts.parse("xl/sharedStrings.xml", sharedStrings)) {
        sharedStrings.clear();
    }
    limits.memory.spend(half - forStrings.left());
    XLSXWorkbook workbook =
        readSheets(parts, workbookPart, relationships, sharedStrings, *pool, limits);
    workbook.lacksTexts = forStrings.isExhausted();
    for (XLSXWorkbook::Sheet& sheet : workbook.sheets) {
        sheet.texts = pool;
    }
    return workbook;
}

}  // namespace tessivo
