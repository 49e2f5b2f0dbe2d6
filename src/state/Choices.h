#pragma once

#include "platform/PreferencesStore.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

/// What was chosen on this computer and isn't part of a show, such as how large a screen draws: one
/// value under a key of its own for each, beside the record of the shows. Main thread only.
class Choices {
public:
    explicit Choices(PreferencesStore& store) : store_(store) {}

    /// Nothing when it was never chosen. It may come from another version of the program.
    std::optional<std::string> get(std::string_view key) const {
        const auto set = set_.find(key);
        return set != set_.end() ? set->second : store_.data(key);
    }
    void set(std::string_view key, std::string value) {
        if (get(key) != value) {
            store_.setData(key,
                           set_.insert_or_assign(std::string(key), std::move(value)).first->second);
        }
    }
    void remove(std::string_view key) {
        set_.erase(std::string(key));
        store_.remove(key);
    }
    /// Sets what was chosen in this run once more: some of it may not have been written.
    void setAgain() {
        for (const auto& [key, value] : set_) {
            store_.setData(key, value);
        }
    }

private:
    PreferencesStore& store_;
    std::map<std::string, std::string, std::less<>> set_;  // in this run
};

}  // namespace tessivo
