#pragma once

#include "model/Show.h"
#include "ui/paper/PaperTable.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tessivo {

/// What is handed out of a show: the run sheet, then who has which microphone when, with a column
/// to note batteries in. `plannedStart` is in seconds after midnight.
std::vector<PaperTable> tablesOf(const Show& show, std::optional<std::int64_t> plannedStart);

}  // namespace tessivo
