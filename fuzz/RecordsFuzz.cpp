#include "Fuzz.h"
#include "model/ShowJson.h"
#include "state/ResumePoint.h"
#include "sync/LiveState.h"

#include <concepts>
#include <optional>
#include <string>

using namespace tessivo;

namespace {

/// Whatever could be read must be writable, and read back as the same.
template <typename Record>
void checkRoundTrip(const std::optional<Record>& record, auto decode) {
    if (record) {
        const std::string json = encodeJson(*record);
        const std::optional<Record> back = decode(json);
        require(back && encodeJson(*back) == json);
        if constexpr (std::equality_comparable<Record>) {
            require(*back == *record);
        }
    }
}

}  // namespace

/// Any bytes as a stored record, a file or a message.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = asText(data, size);
    checkRoundTrip(decodeGuest(text), decodeGuest);
    checkRoundTrip(decodeSong(text), decodeSong);
    checkRoundTrip(decodeShow(text), decodeShow);
    checkRoundTrip(decodePersistedData(text), decodePersistedData);
    checkRoundTrip(decodeLiveState(text), decodeLiveState);
    checkRoundTrip(decodeResumePoint(text), decodeResumePoint);
    return 0;
}
