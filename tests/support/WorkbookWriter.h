#pragma once

#include "support/ZipWriter.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo::test {

/// The parts of a workbook as text, to be spoilt at will before they are packed.
struct WorkbookWriter {
    std::string workbook, relationships, sharedStrings;
    std::vector<std::string> sheets;

    /// One sheet per element of `sheetData` (its rows as XML), named "Feuille 1" and so on.
    explicit WorkbookWriter(const std::vector<std::string>& sheetData,
                            const std::vector<std::string>& strings = {}) {
        const std::string schemas = "http://schemas.openxmlformats.org/";
        const std::string types = schemas + "officeDocument/2006/relationships";
        const std::string main = " xmlns=\"" + schemas + "spreadsheetml/2006/main\"";
        for (std::size_t i = 1; i <= sheetData.size(); ++i) {
            const std::string number = std::to_string(i);
            workbook += "<sheet name=\"Feuille " + number + "\" sheetId=\"" + number +
                        "\" r:id=\"rId" + number + "\"/>";
            relationships += "<Relationship Id=\"rId" + number + "\" Type=\"" + types +
                             "/worksheet\" Target=\"worksheets/sheet" + number + ".xml\"/>";
            sheets.push_back("<worksheet" + main + "><sheetData>" + sheetData[i - 1] +
                             "</sheetData></worksheet>");
        }
        workbook = "<workbook" + main + " xmlns:r=\"" + types + "\"><sheets>" + workbook +
                   "</sheets></workbook>";
        relationships = "<Relationships xmlns=\"" + schemas + "package/2006/relationships\">" +
                        relationships + "<Relationship Id=\"strings\" Type=\"" + types +
                        "/sharedStrings\" Target=\"sharedStrings.xml\"/></Relationships>";
        for (const std::string& string : strings) {
            sharedStrings += "<si>" + string + "</si>";
        }
        sharedStrings = "<sst" + main + ">" + sharedStrings + "</sst>";
    }

    std::vector<ZipMember> members() const {
        std::vector<ZipMember> members = {
            {.name = "xl/workbook.xml", .content = workbook},
            {.name = "xl/_rels/workbook.xml.rels", .content = relationships},
            {.name = "xl/sharedStrings.xml", .content = sharedStrings}};
        for (std::size_t i = 0; i < sheets.size(); ++i) {
            members.push_back({.name = "xl/worksheets/sheet" + std::to_string(i + 1) + ".xml",
                               .content = sheets[i]});
        }
        return members;
    }

    std::string file() const { return zipOf(members()); }
};

/// A workbook of one sheet.
inline std::string workbookOf(const std::string& sheetData,
                              const std::vector<std::string>& strings = {}) {
    return WorkbookWriter({sheetData}, strings).file();
}

}  // namespace tessivo::test
