#pragma once

#include "base/Instant.h"

#include <string>

namespace tessivo {

/// What an edit of the shows is called, for whoever wants to take it back.
struct Edit {
    std::string name;  ///< French, as it follows "Annuler : ": supprimer « Carrousel »
    Instant at;
    /// Names the one field that is typed into, its record included; empty for all other edits.
    /// What is typed into a field without a pause is taken back at once.
    std::string field{};
    /// Of a removal: what has happened, French: Morceau supprimé : « Carrousel ».
    std::string removal{};
};

}  // namespace tessivo
