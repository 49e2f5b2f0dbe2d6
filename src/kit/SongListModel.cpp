#include "kit/SongListModel.h"

namespace tessivo {

void SongListModel::present(const Show& show, std::span<const Song> songs) {
    std::vector<SongInfo> rows;
    rows.reserve(songs.size());
    for (const Song& song : songs) {
        rows.emplace_back(song, static_cast<int>(&song - show.songs.data()) + 1);
    }
    setRows(std::move(rows));
}

}  // namespace tessivo
