#include "import/RunSheetFile.h"

#include "import/ZipArchive.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <variant>

namespace tessivo {
namespace {

constexpr const char* saveAsWorkbook = "Ouvre-le dans un tableur et enregistre-le au format .xlsx.";

/// The text with every character as UTF-16 has it, in which old containers name what they hold.
std::string wide(std::string_view text) {
    std::string result;
    for (const char c : text) {
        result += {c, '\0'};
    }
    return result;
}

/// Formats that begin with what they are.
bool isCompoundFile(std::string_view file) {
    return file.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
}

bool looksLikeText(std::string_view file) {
    const std::string_view start = file.substr(0, 4096);
    return !file.empty() && std::ranges::none_of(start, [](char c) {
        return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
    });
}

std::string adviceAboutMembers(const std::vector<ZipEntry>& members, std::string_view file) {
    const auto has = [&](std::string_view name) {
        return std::ranges::find(members, name, &ZipEntry::name) != members.end();
    };
    if (has("mimetype") && file.find("application/vnd.oasis.opendocument") < 4096) {
        return std::string("C'est un fichier .ods. ") + saveAsWorkbook;
    }
    if (has("xl/workbook.bin")) {
        return std::string("C'est un fichier .xlsb. ") + saveAsWorkbook;
    }
    if (has("[Content_Types].xml") && !has("word/document.xml")) {
        return "Ouvre-le dans un tableur et enregistre-le de nouveau en .xlsx.";
    }
    return "Ce n'est pas un classeur de tableur.";
}

/// A number with its thousands apart.
std::string grouped(std::int64_t number) {
    std::string digits = std::to_string(number);
    for (std::ptrdiff_t i = std::ssize(digits) - 3; i > (number < 0 ? 1 : 0); i -= 3) {
        digits.insert(static_cast<std::size_t>(i), "\u00A0");
    }
    return digits;
}

std::string quoted(std::string_view name) {
    constexpr std::size_t shown = 60;
    const bool isLong = name.size() > shown;
    std::size_t end = std::min(name.size(), shown);
    while (isLong && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) {
        --end;
    }
    return "«\u00A0" + std::string(name.substr(0, end)) + (isLong ? "…" : "") + "\u00A0»";
}

std::string lossOfSheets(const std::vector<std::string>& names) {
    constexpr std::size_t shown = 3;
    if (names.size() == 1) {
        return "Feuille " + quoted(names[0]) + " non lue";
    }
    std::string list = "Feuilles ";
    for (std::size_t i = 0; i < std::min(names.size(), shown); ++i) {
        list += (i == 0 ? "" : ", ") + quoted(names[i]);
    }
    if (names.size() > shown) {
        const auto others = static_cast<std::int64_t>(names.size() - shown);
        list += " et " + grouped(others) + (others > 1 ? " autres" : " autre");
    }
    return list + " non lues";
}

}  // namespace

RunSheetFile readRunSheet(FileStore& files, const FileLocation& location, WorkProgress& progress) {
    const std::optional<std::string> bytes = files.read(location, XLSXReader::maximumFileSize);
    if (!bytes) {
        const bool isTooLong = files.isLongerThan(location, XLSXReader::maximumFileSize);
        return {ReaderError::notAZip,
                isTooLong ? "Il dépasse 64 Mo\u00A0: un conducteur en fait mille fois moins."
                          : "Il n'a pas pu être ouvert."};
    }
    RunSheetFile read{XLSXReader::read(*bytes, progress)};
    const auto* workbook = std::get_if<XLSXWorkbook>(&read.result);
    if (!workbook || workbook->sheets.empty()) {
        read.advice = adviceAbout(*bytes);
    }
    return read;
}

std::string adviceAbout(std::string_view file) {
    if (file.empty()) {
        return "Le fichier est vide.";
    }
    if (isCompoundFile(file)) {
        return file.find(wide("EncryptedPackage")) != std::string_view::npos
                   ? "Il est protégé par un mot de passe. Ouvre-le dans un tableur et "
                     "enregistre-le sans protection."
                   : std::string("C'est un fichier .xls. ") + saveAsWorkbook;
    }
    const std::vector<ZipEntry> members = parseCentralDirectory(file);
    if (!members.empty()) {
        return adviceAboutMembers(members, file);
    }
    if (file.starts_with("PK\x03\x04")) {
        return "Il est incomplet. Copie-le ou télécharge-le de nouveau.";
    }
    return looksLikeText(file) ? std::string("C'est un fichier texte (.csv). ") + saveAsWorkbook
                               : "Ce n'est pas un classeur de tableur.";
}

std::vector<std::string> lossesOf(const XLSXWorkbook& workbook, const XLSXWorkbook::Sheet& sheet) {
    std::vector<std::string> losses;
    if (sheet.lastRowRead) {
        losses.push_back("Fichier trop grand\u00A0: lu jusqu'à la ligne " +
                         grouped(*sheet.lastRowRead));
    }
    if (workbook.lacksTexts) {
        losses.emplace_back("Fichier trop grand\u00A0: des textes n'ont pas été lus");
    }
    if (!workbook.unreadSheets.empty()) {
        losses.push_back(lossOfSheets(workbook.unreadSheets));
    }
    return losses;
}

}  // namespace tessivo
