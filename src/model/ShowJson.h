#pragma once

#include "model/PersistedData.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tessivo {

/// The JSON form (RFC 8259, UTF-8, compact) of the records: one object each, whose members carry
/// the field names. Absent optional fields are left out. Encoding cannot fail.
std::string encodeJson(const Guest& guest);
std::string encodeJson(const Song& song);
std::string encodeJson(const Show& show);
std::string encodeJson(const PersistedData& data);
/// The same record as `encodeJson(PersistedData)`, written without copying the shows first: it
/// runs at every keystroke. A caller that gives the last result as `storage` spares this one the
/// cost of new memory, a third of the whole.
std::string encodePersistedJson(std::span<const Show> shows,
                                const std::optional<Uuid>& activeShowId,
                                std::int64_t activeSongIndex, std::string storage = {});

/// Decoding gives the whole record or nothing. Unknown members are ignored; a missing required
/// member, a member of the wrong type, a UUID that is none, invalid UTF-8, text after the document
/// or nesting deeper than `maximumJsonDepth` fail. Null stands for an absent optional field.
std::optional<Guest> decodeGuest(std::string_view json);
std::optional<Song> decodeSong(std::string_view json);
std::optional<Show> decodeShow(std::string_view json);
std::optional<PersistedData> decodePersistedData(std::string_view json);

/// Far above what a record needs (6), far below what would hurt.
constexpr int maximumJsonDepth = 512;

}  // namespace tessivo
