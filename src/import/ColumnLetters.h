#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessivo {

// A spreadsheet names its columns by letters: A to Z, then AA and so on.

/// The letters of a column number: 1 is A, 26 is Z, 27 is AA; none for a number below 1.
std::string columnLetter(std::int64_t number);

/// The column number at the start of a cell reference such as B7, from 1 for A; 0 when it starts
/// with no letter, or with more than the 13 that a signed 64-bit number can hold. Lower-case
/// letters count by their codes, 32 above the upper-case ones.
std::int64_t columnIndex(std::string_view reference);

}  // namespace tessivo
