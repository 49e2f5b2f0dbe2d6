#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace tessivo {

/// The life of the object that holds it as a member. What is to run later is wrapped by it, and
/// then does nothing once the object has gone or has called it off. A wrapped function may destroy
/// the object: it is kept by whoever runs it. Wrapping and running happen on one thread; a wrapped
/// function may be carried through others.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;

    template <typename Function>
    auto guard(Function function) const {
        return [life = std::weak_ptr<const bool>(life_),
                function = std::move(function)](auto&&... arguments) mutable {
            if (!life.expired()) {
                function(std::forward<decltype(arguments)>(arguments)...);
            }
        };
    }

    /// What was wrapped until now does nothing from here on.
    void callOff() { life_ = std::make_shared<const bool>(); }

private:
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>();
};

/// Calls a handler that may be empty, and that may destroy its owner: a copy runs.
template <typename... Parameters, typename... Arguments>
void callHandler(const std::function<void(Parameters...)>& handler, Arguments&&... arguments) {
    if (const auto copy = handler) {
        copy(std::forward<Arguments>(arguments)...);
    }
}

}  // namespace tessivo
