#include "import/ColumnLetters.h"

#include <cassert>
#include <cstddef>

namespace tessivo {

std::string columnLetter(std::int64_t number) {
    std::string letters;
    for (; number >= 1; number = (number - 1) / 26) {
        letters.insert(letters.begin(), static_cast<char>('A' + (number - 1) % 26));
    }
    return letters;
}

std::int64_t columnIndex(std::string_view reference) {
    constexpr std::size_t maximumLetters = 13;
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    std::int64_t number = 0;
    std::size_t letters = 0;
    for (; letters < reference.size() && isLetter(reference[letters]); ++letters) {
        if (letters == maximumLetters) {
            return 0;
        }
        number = number * 26 + (reference[letters] - 'A' + 1);
    }
    assert(number >= 0);
    return number;
}

}  // namespace tessivo
