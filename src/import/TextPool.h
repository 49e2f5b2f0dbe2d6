#pragma once

#include "import/ReadingLimits.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

/// The texts of a workbook, each kept once, so that a cell needs only a position. They stand in
/// blocks, for one growing text would at times be there twice.
class TextPool {
public:
    struct Span {
        std::uint32_t offset = 0;
        std::uint32_t length = 0;  ///< in bytes
    };

    /// The longest text that spreadsheets store, in UTF-16 units; a longer one is cut.
    static constexpr std::size_t maximumLength = 32'767;

    /// Adds a piece to a text that is still being read, unless that is too long already.
    static void append(std::string& text, std::string_view piece);

    /// Keeps a text. An empty span when there is no memory left for it.
    Span add(std::string_view text, Allowance& memory);

    std::string_view at(Span span) const;
    /// Whether the text there was too long to be kept whole.
    bool isCut(Span span) const;

private:
    static constexpr std::size_t blockSize = std::size_t{256} * 1024;

    std::vector<std::unique_ptr<char[]>> blocks_;
    std::size_t usedOfLast_ = blockSize;
    std::vector<std::uint32_t> cutTexts_;  ///< their offsets, ascending
};

}  // namespace tessivo
