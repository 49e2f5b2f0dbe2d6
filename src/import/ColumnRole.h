#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tessivo {

/// What a column of a run sheet means.
enum class ColumnRole { ignore, title, guests, duration, ltc };

/// Every role in the order in which the operator is offered them.
inline constexpr std::array columnRoles = {ColumnRole::ignore, ColumnRole::title,
                                           ColumnRole::guests, ColumnRole::duration,
                                           ColumnRole::ltc};

/// The role's text, which is also its label on screen.
std::string_view textOf(ColumnRole role);
/// The role with that text; none for any other.
std::optional<ColumnRole> columnRoleFromText(std::string_view text);

}  // namespace tessivo
