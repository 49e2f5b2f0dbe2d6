#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

/// The user's preferences: binary values under keys, kept between runs. Main thread only.
class PreferencesStore {
public:
    virtual ~PreferencesStore() = default;

    /// The value under `key`; nothing when there is none. A value that exists but can't be read
    /// gives empty bytes, so that it is treated like any other unreadable value.
    virtual std::optional<std::string> data(std::string_view key) = 0;

    /// Replaces the value under `key`. Once this has returned, killing the process loses nothing,
    /// and no crash can leave a part of a value behind. A failure (a full disk, a store that
    /// belongs to another running program) leaves the old value and is not reported.
    virtual void setData(std::string_view key, std::string_view bytes) = 0;

    /// Keeps the present value under another name, out of reach of `setData`; false when that
    /// could not be done.
    virtual bool setAside(std::string_view key) = 0;
};

}  // namespace tessivo
