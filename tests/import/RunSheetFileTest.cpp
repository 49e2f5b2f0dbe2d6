#include "import/RunSheetFile.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "support/WorkbookWriter.h"

#include <doctest/doctest.h>

#include <string>
#include <utility>
#include <variant>

using namespace tessivo;
using namespace tessivo::test;

TEST_CASE("a file that gives no sheet comes with what to do about it") {
    const std::string compound = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
    std::string encrypted = compound;
    for (const char c : std::string("EncryptedPackage")) {
        encrypted += {c, '\0'};
    }
    const std::string ods = "application/vnd.oasis.opendocument.spreadsheet";
    WorkbookWriter prefixed({""});
    prefixed.workbook = "<x:workbook/>";
    std::vector<ZipMember> members = prefixed.members();
    members.push_back({.name = "[Content_Types].xml"});
    const std::pair<std::string, const char*> rows[] = {
        {"", "Le fichier est vide."},
        {compound, "C'est un fichier .xls."},
        {encrypted, "Il est protégé par un mot de passe."},
        {zipOf({{.name = "mimetype", .content = ods, .method = 0}}), "C'est un fichier .ods."},
        {zipOf({{.name = "xl/workbook.bin"}}), "C'est un fichier .xlsb."},
        {zipOf(members), "Ouvre-le dans un tableur et enregistre-le de nouveau en .xlsx."},
        {zipOf({{.name = "word/document.xml"}}), "Ce n'est pas un classeur de tableur."},
        {workbookOf("").substr(0, 200), "Il est incomplet."},
        {"Titre;Durée\r\nÉté;3'45\r\n", "C'est un fichier texte (.csv)."},
        {std::string(100, '\1'), "Ce n'est pas un classeur de tableur."},
        {std::string(XLSXReader::maximumFileSize + 1, ' '), "Il dépasse 64 Mo"},
    };
    SimulatedPlatform computer;
    WorkProgress progress;
    for (const auto& row : rows) {
        CAPTURE(row.second);
        computer.files.contents["/gala.xlsx"] = row.first;
        CHECK(readRunSheet(computer.files, "/gala.xlsx", progress).advice.starts_with(row.second));
    }
    CHECK(readRunSheet(computer.files, "/rien.xlsx", progress).advice ==
          "Il n'a pas pu être ouvert.");
    computer.files.contents["/gala.xlsx"] = workbookOf("");
    const RunSheetFile read = readRunSheet(computer.files, "/gala.xlsx", progress);
    CHECK(std::holds_alternative<XLSXWorkbook>(read.result));
    CHECK(read.advice.empty());
}

TEST_CASE("what couldn't be read is told in a sentence each") {
    XLSXWorkbook workbook;
    XLSXWorkbook::Sheet sheet;
    CHECK(lossesOf(workbook, sheet).empty());
    sheet.lastRowRead = 509'767;
    workbook.lacksTexts = true;
    workbook.unreadSheets = {"Conducteur"};
    CHECK(lossesOf(workbook, sheet) ==
          std::vector<std::string>{"Fichier trop grand\u00A0: lu jusqu'à la ligne 509\u00A0767",
                                   "Fichier trop grand\u00A0: des textes n'ont pas été lus",
                                   "Feuille «\u00A0Conducteur\u00A0» non lue"});
    workbook = {.sheets = {}, .unreadSheets = {std::string(59, 'a') + "é", "b", "c", "d"}};
    CHECK(lossesOf(workbook, {}).at(0) == "Feuilles «\u00A0" + std::string(59, 'a') +
                                              "…\u00A0», «\u00A0b\u00A0», «\u00A0c\u00A0» et "
                                              "1 autre non lues");
}
