#pragma once

#include <string>
#include <string_view>

namespace tessivo {

/// How an edit of a record is told: the words and what the record is called, supprimer « Carrousel
/// »; without that, `nameless`: supprimer un morceau.
std::string withName(std::string_view words, std::string_view name, std::string_view nameless);

}  // namespace tessivo
