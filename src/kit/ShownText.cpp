#include "kit/ShownText.h"

#include <QList>

#include <algorithm>

namespace tessivo {
namespace {

/// Of those that are drawn from pictures: ° and © are not.
constexpr uint firstSymbol = 0x2000;

bool isSymbol(uint character) {
    const QChar::Category category = QChar::category(character);
    return character >= firstSymbol &&
           (category == QChar::Symbol_Other || category == QChar::Symbol_Modifier ||
            category == QChar::Mark_Enclosing ||
            (character >= 0x10000 && !QChar::isLetterOrNumber(character)));
}

}  // namespace

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString toShownText(std::string_view text, ShownPart most) {
    // No character takes more than four bytes of UTF-8; what is cut in two here goes below.
    const QString start =
        toQString(text.substr(0, static_cast<std::size_t>(4 * most.characters + 4)));
    if (start.size() <= most.characters && countSymbols(start) <= most.symbols) {
        return start;
    }
    const QList<uint> characters = start.toUcs4();
    QList<uint> kept;
    qsizetype symbols = 0;
    for (const uint character : characters.first(std::min(characters.size(), most.characters))) {
        if (!isSymbol(character) || ++symbols <= most.symbols) {
            kept.append(character);
        }
    }
    const auto* first = reinterpret_cast<const char32_t*>(kept.constData());
    const QString shown = QString::fromUcs4(first, kept.size());
    return kept.size() < characters.size() ? shown + u'…' : shown;
}

qsizetype countSymbols(const QString& text) {
    if (std::all_of(text.begin(), text.end(),
                    [](QChar unit) { return unit.unicode() < firstSymbol; })) {
        return 0;
    }
    const QList<uint> characters = text.toUcs4();
    return std::count_if(characters.begin(), characters.end(), isSymbol);
}

}  // namespace tessivo
