#pragma once

#include "model/PersistedData.h"

#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

/// The JSON form (RFC 8259, UTF-8, compact) of the records: one object each, whose members carry
/// the field names. Absent optional fields are left out. Encoding cannot fail.
std::string encodeJson(const Guest& guest);
std::string encodeJson(const Song& song);
std::string encodeJson(const Show& show);
std::string encodeJson(const PersistedData& data);

/// Decoding gives the whole record or nothing. A missing required member, a member of the wrong
/// type, a UUID that is none, invalid UTF-8 and text after the document fail. Null stands for an
/// absent optional field. Members that the record doesn't know are skipped: their brackets and
/// quotes are followed, but nothing asks whether a number or a word among them is one.
std::optional<Guest> decodeGuest(std::string_view json);
std::optional<Song> decodeSong(std::string_view json);
std::optional<Show> decodeShow(std::string_view json);
std::optional<PersistedData> decodePersistedData(std::string_view json);

}  // namespace tessivo
