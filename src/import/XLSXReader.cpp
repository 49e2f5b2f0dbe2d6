#include "import/XLSXReader.h"

#include "import/SheetParser.h"
#include "import/WorkbookParts.h"
#include "import/XmlParser.h"
#include "import/ZipArchive.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tessivo {
namespace {

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;

/// How much work the parts of an archive may be, in bytes of plain text. Members that share their
/// data and sheets that share a part could ask for any amount otherwise. The least takes about a
/// second of an ordinary computer, and fills a sheet with a million and a half cells.
std::size_t readingBudget(std::size_t archiveSize) {
    return std::clamp(archiveSize * 16, 160 * mebibyte, 1024 * mebibyte);
}

/// How many bytes the texts of a workbook may come to: they compress less than the tags do.
std::size_t textCapacity(std::size_t archiveSize) {
    return std::clamp(archiveSize * 8, 64 * mebibyte, 512 * mebibyte);
}

/// Finds the parts of a workbook by name and parses them within one budget.
class PartReader {
public:
    explicit PartReader(std::string_view archive)
        : archive_(archive),
          entries_(parseCentralDirectory(archive)),
          budget_(readingBudget(archive.size())) {
        for (const ZipEntry& entry : entries_) {
            byName_.emplace(entry.name, &entry);  // the first of a name stays
        }
    }

    bool isEmpty() const { return entries_.empty(); }

    /// False when there is no such part or it can't be extracted; what `events` got is then void.
    bool parse(std::string_view path, XmlEvents& events) {
        const auto found = byName_.find(path);
        const auto stored =
            found == byName_.end() ? std::nullopt : storedBytes(*found->second, archive_);
        // Only what is there costs anything: a false size is this part's fault alone.
        if (!stored || !spend(stored->size())) {
            return false;
        }
        XmlParser parser(events);
        const bool extracted = extract(*found->second, archive_, [&](std::string_view piece) {
            const std::size_t before = parser.extraWork();
            parser.feed(piece);
            return spend(piece.size() + parser.extraWork() - before);
        });
        parser.finish();
        return extracted;
    }

private:
    bool spend(std::size_t work) {
        const bool suffices = work <= budget_;
        budget_ -= suffices ? work : budget_;
        return suffices;
    }

    std::string_view archive_;
    std::vector<ZipEntry> entries_;
    std::unordered_map<std::string_view, const ZipEntry*> byName_;
    std::size_t budget_;
};

/// The sheets of the workbook in its order, without their texts.
std::vector<XLSXWorkbook::Sheet> readSheets(PartReader& parts, const WorkbookParser& workbook,
                                            const RelsParser& relationships,
                                            const SharedStringsParser& sharedStrings,
                                            TextPool& pool) {
    std::vector<XLSXWorkbook::Sheet> sheets;
    for (const SheetRef& ref : workbook.refs) {
        const auto target = relationships.targets.find(ref.relId);
        SheetParser parser(sharedStrings, pool);
        if (target != relationships.targets.end() && parts.parse("xl/" + target->second, parser)) {
            sheets.push_back(std::move(parser).takeSheet());
            sheets.back().name = ref.name;
        }
    }
    return sheets;
}

}  // namespace

XLSXReader::Result XLSXReader::read(FileStore& files, const FileLocation& location) {
    const std::optional<std::string> archive = files.read(location, maximumFileSize);
    return archive ? read(*archive) : Result(ReaderError::notAZip);
}

XLSXReader::Result XLSXReader::read(std::string_view archive) {
    PartReader parts(archive);
    if (parts.isEmpty()) {
        return ReaderError::notAZip;
    }
    TextPool pool(textCapacity(archive.size()));
    SharedStringsParser sharedStrings(pool);
    if (!parts.parse("xl/sharedStrings.xml", sharedStrings)) {
        sharedStrings.clear();
    }
    WorkbookParser workbookPart;
    RelsParser relationships;
    if (!parts.parse("xl/workbook.xml", workbookPart) ||
        !parts.parse("xl/_rels/workbook.xml.rels", relationships)) {
        return ReaderError::corrupt;
    }
    XLSXWorkbook workbook{readSheets(parts, workbookPart, relationships, sharedStrings, pool)};
    const auto texts = std::make_shared<const std::string>(std::move(pool).takeBytes());
    for (XLSXWorkbook::Sheet& sheet : workbook.sheets) {
        sheet.texts = texts;
    }
    return workbook;
}

}  // namespace tessivo
