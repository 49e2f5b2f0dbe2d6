#pragma once

#include "platform/FileStore.h"

namespace tessivo {

/// The computer's files. Only regular files are read or replaced. A file that is replaced keeps
/// its permissions, and a symbolic link goes on pointing to it.
class DiskFileStore : public FileStore {
public:
    std::optional<std::string> read(const FileLocation& location,
                                    std::size_t maximumBytes) override;
    bool isLongerThan(const FileLocation& location, std::size_t bytes) override;
    bool writeAtomically(const FileLocation& location, std::string_view bytes) override;
};

}  // namespace tessivo
