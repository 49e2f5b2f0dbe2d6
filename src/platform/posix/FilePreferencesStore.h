#pragma once

#include "platform/PreferencesStore.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/RecentValue.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>

namespace tessivo {

/// The preferences as files in one folder, one file per key, readable by the user only. Keys are
/// plain file names.
///
/// The first store on a folder owns it until it is destroyed or its process ends in whatever way;
/// another store, in this or another process, then reads but writes nothing, even later, for what
/// it read may be out of date.
///
/// A value is written twice: at once as a `RecentValue`, which killing the process doesn't lose,
/// and on a thread of the store's own, within a second, synced, to the file named after its key,
/// which a power cut doesn't lose either. That file is whole at any time.
class FilePreferencesStore : public PreferencesStore {
public:
    /// Makes the folder if need be, and takes hold of it. `folder` is UTF-8.
    explicit FilePreferencesStore(std::string folder);

    /// Whether this store owns its folder. If not, what is changed in this run will be lost, and
    /// the operator has to know.
    bool isWritable() const { return lock_.isOpen(); }

    std::optional<std::string> data(std::string_view key) override;
    void setData(std::string_view key, std::string_view bytes) override;
    /// Renames the file to `key`.illisible-N, N counting from 1.
    bool setAside(std::string_view key) override;

private:
    struct Value {
        RecentValue recent;
        /// The version that isn't in the synced file yet, and its bytes.
        std::optional<std::uint64_t> unsettled;
        std::string bytes;
    };

    std::string pathOf(std::string_view name) const;
    Value& valueOf(std::string_view key);
    void settleUntil(const std::stop_token& stop);
    void settle();
    void syncFolder() const;

    std::string folder_;
    FileDescriptor lock_;

    /// Held by whoever brings values to the disk, for as long as that takes; before `mutex_`.
    std::mutex settling_;
    std::string settlingBytes_;
    /// Held for moments only, for the main thread waits for it. Guards what follows.
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::map<std::string, Value, std::less<>> values_;
    /// The last member: its end syncs what is left.
    std::jthread settler_;
};

}  // namespace tessivo
