#pragma once

#include "base/Instant.h"

#include <string>

namespace tessivo {

/// What an edit of the shows is called, for whoever wants to take it back.
struct Edit {
    std::string name;  ///< French, as it follows "Annuler : ": supprimer « Carrousel »
    Instant at;
    /// What is typed into or moved, its record included, of an edit that is one of many: those that
    /// follow each other without a pause are taken back together. Empty for all other edits.
    std::string field{};
    /// Of a removal: what has happened, French: Morceau supprimé : « Carrousel ».
    std::string removal{};
};

}  // namespace tessivo
