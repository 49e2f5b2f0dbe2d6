#include "kit/ShownText.h"

namespace tessivo {
namespace {

constexpr qsizetype charactersShown = 300;

}  // namespace

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString toShownText(std::string_view text) {
    // No character takes more than four bytes of UTF-8; what is cut in two here goes below.
    const QString start = toQString(text.substr(0, 4 * charactersShown + 4));
    return start.size() > charactersShown ? start.left(charactersShown) + QStringLiteral("…")
                                          : start;
}

}  // namespace tessivo
