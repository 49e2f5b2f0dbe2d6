#pragma once

#include <cassert>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tessivo {

/// Ends a subscription to a Signal when it is destroyed. Move-only: a subscription has one owner.
/// It may outlive the signal.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            end_ = std::exchange(other.end_, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { reset(); }

    explicit operator bool() const { return end_ != nullptr; }

    void reset() {
        if (auto end = std::exchange(end_, nullptr)) {
            end();
        }
    }

private:
    std::function<void()> end_;
};

/// Calls its subscribers in the order of their subscription, on the thread that emits (one thread
/// only: signals take no lock). A subscriber may subscribe or end any subscription from within a
/// call: an ended one is not called again, a new one is called from the next emission on.
template <typename... Arguments>
class Signal {
public:
    using Slot = std::function<void(Arguments...)>;

    Subscription subscribe(Slot slot) {
        assert(slot);
        const std::uint64_t id = ++state_->lastId;
        state_->entries.push_back({id, std::make_shared<Slot>(std::move(slot))});
        return Subscription([weak = std::weak_ptr<State>(state_), id] {
            if (auto state = weak.lock()) {
                state->end(id);
            }
        });
    }

    void emit(Arguments... arguments) const {
        // The local reference keeps the entries alive when a subscriber destroys the signal.
        const std::shared_ptr<State> state = state_;
        ++state->depth;
        const std::size_t count = state->entries.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (const std::shared_ptr<Slot> slot = state->entries[i].slot) {
                (*slot)(arguments...);
            }
        }
        assert(state->depth > 0 && state->entries.size() >= count);
        if (--state->depth == 0) {
            state->sweep();
        }
    }

private:
    struct Entry {
        std::uint64_t id;
        std::shared_ptr<Slot> slot;  // empty once ended
    };
    struct State {
        std::vector<Entry> entries;
        std::uint64_t lastId = 0;
        int depth = 0;

        void end(std::uint64_t id) {
            for (Entry& entry : entries) {
                if (entry.id == id) {
                    entry.slot.reset();
                }
            }
            if (depth == 0) {
                sweep();
            }
        }
        void sweep() {
            std::erase_if(entries, [](const Entry& entry) { return !entry.slot; });
        }
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace tessivo
