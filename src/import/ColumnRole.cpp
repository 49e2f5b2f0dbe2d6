#include "import/ColumnRole.h"

#include <algorithm>

namespace tessivo {

std::string_view textOf(ColumnRole role) {
    switch (role) {
        case ColumnRole::ignore:
            return "Ignorer";
        case ColumnRole::title:
            return "Titre du morceau";
        case ColumnRole::guests:
            return "Guests / micros";
        case ColumnRole::duration:
            return "Durée";
        case ColumnRole::ltc:
            return "Timecode LTC";
    }
    return {};
}

std::optional<ColumnRole> columnRoleFromText(std::string_view text) {
    const auto role = std::ranges::find(columnRoles, text, textOf);
    return role == columnRoles.end() ? std::nullopt : std::optional(*role);
}

}  // namespace tessivo
