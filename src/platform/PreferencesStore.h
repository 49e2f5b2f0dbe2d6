#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

/// The user's preferences: binary values under keys, kept between runs. One running program holds
/// them; another one reads only. Main thread only; nothing here waits for the disk.
class PreferencesStore {
public:
    virtual ~PreferencesStore() = default;

    /// Takes hold of the store unless another running program has it or it can't be reached; gives
    /// whether this program holds it now. What was read before that may be out of date.
    virtual bool takeHold() = 0;

    /// Whether all that was set is kept. False while the store isn't held, and from a value that
    /// could not be written, or later not be brought to the disk, until one set under the same key
    /// could: the caller has to set it again.
    virtual bool isKeeping() const = 0;

    /// The value under `key`; nothing when there is none. A value that exists but can't be read
    /// gives empty bytes, so that it is treated like any other unreadable value.
    virtual std::optional<std::string> data(std::string_view key) = 0;

    /// Replaces the value under `key`. When this has returned and the store `isKeeping`, killing
    /// the process loses nothing, and no crash can leave a part of a value behind. On a failure (a
    /// full disk, no file that can be opened) the old value stands and `isKeeping` is false. A
    /// store that isn't held is left as it is.
    virtual void setData(std::string_view key, std::string_view bytes) = 0;

    /// Takes the value under `key` away. A power cut at this moment may bring it back.
    virtual void remove(std::string_view key) = 0;

    /// Moves the present value to another name, out of reach of `setData`; false when that could
    /// not be done. A value that has gone meanwhile is out of reach too.
    virtual bool setAside(std::string_view key) = 0;
};

}  // namespace tessivo
