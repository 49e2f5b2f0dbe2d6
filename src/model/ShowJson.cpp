#include "model/ShowJson.h"

#include "model/ShowMembers.h"

namespace tessivo {

std::string encodeJson(const Guest& guest) {
    return json::encode(guest);
}
std::string encodeJson(const Song& song) {
    return json::encode(song);
}
std::string encodeJson(const Show& show) {
    return json::encode(show);
}
std::string encodeJson(const PersistedData& data) {
    return json::encode(data);
}

std::optional<Guest> decodeGuest(std::string_view json) {
    return json::decode<Guest>(json);
}
std::optional<Song> decodeSong(std::string_view json) {
    return json::decode<Song>(json);
}
std::optional<Show> decodeShow(std::string_view json) {
    return json::decode<Show>(json);
}
std::optional<PersistedData> decodePersistedData(std::string_view json) {
    return json::decode<PersistedData>(json);
}

}  // namespace tessivo
