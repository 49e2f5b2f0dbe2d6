#include "state/EditNames.h"

#include "base/Text.h"

namespace tessivo {

std::string withName(std::string_view words, std::string_view name, std::string_view nameless) {
    const std::string_view shown = trimSpacesAndLineBreaks(name);
    if (shown.empty()) {
        return std::string(nameless);
    }
    return std::string(words).append(" «\u00A0").append(shown).append("\u00A0»");
}

}  // namespace tessivo
