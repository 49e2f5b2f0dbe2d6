#include "platform/posix/SafeFileName.h"

#include <algorithm>

namespace tessivo {
namespace {

constexpr std::size_t maximumLength = 255;

bool isForbidden(char c) {
    const auto code = static_cast<unsigned char>(c);
    return c == '/' || code < 0x20 || code == 0x7F;
}

bool isContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// At most `length` bytes of valid UTF-8, without a part of a character.
std::string_view cutTo(std::size_t length, std::string_view text) {
    if (text.size() > length) {
        while (length > 0 && isContinuationByte(text[length])) {
            --length;
        }
        text = text.substr(0, length);
    }
    return text;
}

std::string_view withoutEndsOf(std::string_view leading, std::string_view trailing,
                               std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(leading), text.size()));
    return text.substr(0, text.find_last_not_of(trailing) + 1);
}

}  // namespace

std::string safeFileName(std::string_view name, std::string_view extension) {
    std::string ending = ".";
    ending += extension;
    if (name.ends_with(ending)) {
        name.remove_suffix(ending.size());
    }
    std::string plain(name);
    std::ranges::replace_if(plain, isForbidden, '-');
    const std::string_view base =
        cutTo(maximumLength - ending.size(), withoutEndsOf(" .", " ", plain));
    return std::string(base.empty() ? "Sans titre" : base) + ending;
}

}  // namespace tessivo
