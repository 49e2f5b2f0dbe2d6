#pragma once

#include <iosfwd>
#include <span>
#include <string_view>

namespace tessivo::ltc {

/// The tool's exit codes.
enum class ExitCode { success = 0, writeFailed = 1, wrongUsage = 2 };

/// Runs the tool with its arguments, the program's name not among them. Help goes to `output`,
/// complaints to `errors`.
ExitCode runLtcTool(std::span<const std::string_view> arguments, std::ostream& output,
                    std::ostream& errors);

}  // namespace tessivo::ltc
