#include "import/TextPool.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace tessivo {
namespace {

/// The start of the text that has `maximum` UTF-16 units: a character of four bytes takes two.
std::string_view cutTo(std::string_view text, std::size_t maximum) {
    std::size_t units = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool continues = (byte & 0xC0) == 0x80;
        units += continues ? 0 : byte >= 0xF0 ? 2 : 1;
        if (units > maximum) {
            return text.substr(0, i);
        }
    }
    return text;
}

}  // namespace

void TextPool::append(std::string& text, std::string_view piece) {
    constexpr std::size_t enough = 4 * maximumLength;
    if (text.size() <= enough) {
        text += piece.substr(0, enough);
    }
}

TextPool::Span TextPool::add(std::string_view text, Allowance& memory) {
    const std::string_view kept = text.size() > maximumLength ? cutTo(text, maximumLength) : text;
    if (kept.empty() || !memory.spend(kept.size())) {
        return {};
    }
    if (kept.size() > blockSize - usedOfLast_) {
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(blockSize));
        usedOfLast_ = 0;
    }
    std::memcpy(blocks_.back().get() + usedOfLast_, kept.data(), kept.size());
    const auto offset = static_cast<std::uint32_t>((blocks_.size() - 1) * blockSize + usedOfLast_);
    usedOfLast_ += kept.size();
    if (kept.size() < text.size()) {
        cutTexts_.push_back(offset);
    }
    return {offset, static_cast<std::uint32_t>(kept.size())};
}

std::string_view TextPool::at(Span span) const {
    if (span.length == 0) {
        return {};
    }
    assert(span.offset / blockSize < blocks_.size());
    assert(span.offset % blockSize + span.length <= blockSize);
    return {blocks_[span.offset / blockSize].get() + span.offset % blockSize, span.length};
}

bool TextPool::isCut(Span span) const {
    return std::ranges::binary_search(cutTexts_, span.offset) && span.length > 0;
}

}  // namespace tessivo
