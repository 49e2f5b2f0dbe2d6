#pragma once

#include "platform/PreferencesStore.h"
#include "platform/qt/FileDescriptor.h"

#include <string>

namespace tessivo {

/// The preferences as files in one folder, one file per key, readable by the user only. Keys are
/// plain file names.
///
/// The first store on a folder owns it until it is destroyed or its process ends in whatever way;
/// another store, in this or another process, then reads but writes nothing, even later, for what
/// it read may be out of date.
///
/// Beside a value stands the one before it, `key`.precedent, whose place the next one takes: files
/// that are only ever exchanged and overwritten cost half as much as ones made and deleted.
class FilePreferencesStore : public PreferencesStore {
public:
    /// Makes the folder if need be, and takes hold of it. `folder` is UTF-8.
    explicit FilePreferencesStore(std::string folder);

    /// The user's own: "tessivo" in the configuration folder.
    static std::string defaultFolder();

    /// Whether this store owns its folder. If not, what is changed in this run will be lost, and
    /// the operator has to know.
    bool isWritable() const { return lock_.isOpen(); }

    std::optional<std::string> data(std::string_view key) override;
    void setData(std::string_view key, std::string_view bytes) override;
    /// Renames the file to `key`.illisible-N, N counting from 1.
    bool setAside(std::string_view key) override;

private:
    std::string pathOf(std::string_view name) const;
    void syncFolder() const;

    std::string folder_;
    FileDescriptor lock_;
};

}  // namespace tessivo
