#pragma once

#include "kit/KeyedListModel.h"
#include "kit/SongInfo.h"

#include <span>

namespace tessivo {

/// A stretch of a setlist; the role is `song`.
class SongListModel : public KeyedListModel<SongInfo> {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit SongListModel(QObject* parent = nullptr) : KeyedListModel("song", parent) {}

    /// Shows `songs`, a part of the songs of `show`.
    void present(const Show& show, std::span<const Song> songs);
};

}  // namespace tessivo
