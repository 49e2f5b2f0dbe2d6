#include "kit/ShownText.h"

#include <algorithm>

namespace tessivo {
namespace {

constexpr qsizetype charactersShown = 300;

/// Of those that UTF-16 writes as a pair, emoji most of all: the system shapes each as slowly as a
/// hundred letters, and again for each size that a card tries.
constexpr int pairsShown = 8;

}  // namespace

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString toShownText(std::string_view text) {
    // No character takes more than four bytes of UTF-8; what is cut in two here goes below.
    const QString start = toQString(text.substr(0, 4 * charactersShown + 4));
    qsizetype end = std::min(start.size(), charactersShown);
    int pairs = 0;
    for (qsizetype i = 0; i < end; ++i) {
        if (start[i].isHighSurrogate() && ++pairs > pairsShown) {
            end = i;
        }
    }
    return end < start.size() ? start.left(end) + QStringLiteral("…") : start;
}

}  // namespace tessivo
