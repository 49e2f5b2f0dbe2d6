#pragma once

#include <string>
#include <string_view>

namespace tessivo {

/// A name that the file system takes as it is and that doesn't hide the file, as near as can be to
/// `name`, whose ending ".`extension`" stays: "AC/DC.tessivo" becomes "AC-DC.tessivo", and a name
/// with nothing left "Sans titre.tessivo". At most 255 bytes of UTF-8 (NAME_MAX).
std::string safeFileName(std::string_view name, std::string_view extension);

}  // namespace tessivo
