#pragma once

#include <QString>

#include <string_view>

namespace tessivo {

QString toQString(std::string_view text);
/// For a text that is only looked at: what is too long for any screen ends in "…". A message from
/// the network may hold megabytes, and to lay those out would stop everything else.
QString toShownText(std::string_view text);

}  // namespace tessivo
