#include "model/ShowJson.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

using namespace tessivo;

namespace {

/// Whatever could be read must be writable, and read back as the same.
template <typename Record>
void checkRoundTrip(const std::optional<Record>& record, auto decode) {
    if (!record) {
        return;
    }
    const std::string json = encodeJson(*record);
    const auto back = decode(json);
    if (!back || encodeJson(*back) != json) {
        std::abort();
    }
    if constexpr (std::equality_comparable<Record>) {
        if (*back != *record) {
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkRoundTrip(decodeGuest(text), decodeGuest);
    checkRoundTrip(decodeSong(text), decodeSong);
    checkRoundTrip(decodeShow(text), decodeShow);
    checkRoundTrip(decodePersistedData(text), decodePersistedData);
    return 0;
}
