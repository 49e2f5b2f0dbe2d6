#pragma once

#include <QString>

#include <string_view>

namespace tessivo {

/// How much of a text is laid out.
struct ShownPart {
    qsizetype characters = 300;
    qsizetype symbols = 8;  ///< emoji and their like

    friend bool operator==(const ShownPart&, const ShownPart&) = default;
};

QString toQString(std::string_view text);
/// For a text that is only looked at: what is too long for any screen ends in "…", and so does what
/// has more symbols than a screen draws in time. A message from the network may hold megabytes, and
/// to lay those out would stop everything else.
QString toShownText(std::string_view text, ShownPart most = {});
/// How many emoji, signs and changes to them there are. Systems draw those from pictures, each as
/// slowly as dozens of letters.
qsizetype countSymbols(const QString& text);

}  // namespace tessivo
