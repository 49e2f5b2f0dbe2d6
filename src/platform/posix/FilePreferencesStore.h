#pragma once

#include "platform/PreferencesStore.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/ValueVersion.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>

namespace tessivo {

/// The preferences as files in one folder, one file per key, readable by the user only. Keys are
/// plain file names. The folder is held until the store is destroyed or its process ends in
/// whatever way.
///
/// A value is written once, as a `ValueVersion`: from then on killing the process doesn't lose it.
/// Within a second a thread of the store's own syncs that file and gives it the key's name: from
/// then on a power cut doesn't lose it either. The file named after the key is whole at any time.
class FilePreferencesStore : public PreferencesStore {
public:
    /// `folder` is UTF-8. It is made when the store is taken hold of, and made again when it was
    /// removed and a value is set.
    explicit FilePreferencesStore(std::string folder) : folder_(std::move(folder)) {}

    bool takeHold() override;
    bool isKeeping() const override;
    std::optional<std::string> data(std::string_view key) override;
    void setData(std::string_view key, std::string_view bytes) override;
    void remove(std::string_view key) override;
    /// Renames the file to `key`.illisible-N, N counting from 1.
    bool setAside(std::string_view key) override;

private:
    /// A file that isn't known to be on the disk yet.
    struct Version : ValueVersion {
        bool isBeingSynced = false;
        bool hasFailed = false;  ///< after that, syncing it again may succeed though it is torn
    };
    struct Value {
        std::shared_ptr<Version> newest;  ///< none when the file named after the key is the newest
        bool isUnwritten = false;         ///< the value set last is in no file
        bool isUnsynced = false;          ///< the last try to settle it failed
    };

    bool holdsStill();
    Value& valueOf(std::string_view key);
    void settleUntil(const std::stop_token& stop);
    void settle(std::unique_lock<std::mutex>& lock);
    std::string pathOf(std::string_view name) const;

    const std::string folder_;
    FileDescriptor lock_;
    std::uint64_t lastNumber_ = 0;

    /// Held for moments only, for the main thread waits for it. Guards what follows.
    mutable std::mutex mutex_;
    std::condition_variable_any changed_;
    std::map<std::string, Value, std::less<>> values_;
    /// The last member: its end syncs what is left, before the folder is let go.
    std::jthread settler_;
};

}  // namespace tessivo
