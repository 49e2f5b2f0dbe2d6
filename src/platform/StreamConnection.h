#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tessivo {

/// One TCP connection, on either side. Main thread only.
///
/// Handlers and completions run in main-thread turns of their own, never from within a call of this
/// class. They may destroy the connection, after which none runs any more.
class StreamConnection {
public:
    enum class State {
        preparing,  ///< from the beginning on
        ready,      ///< open
        failed,     ///< could not be opened, was closed by the peer, or broke
        cancelled,  ///< closed by `cancel`
    };

    /// What one `send` hands over; shared, because many connections are given the same bytes.
    using Message = std::shared_ptr<const std::string>;
    using Completion = std::function<void(std::optional<std::string> bytes)>;

    /// How many bytes this computer, its system's buffer included, takes in beyond those that a
    /// `receive` waits for. More stay with the peer, so whoever stops reading slows the peer down,
    /// and whoever reads too slowly isn't shown the past for long.
    static constexpr std::size_t maximumUnreadBytes = 64U << 10U;
    /// How many bytes of messages wait to be sent, beside one that has begun to leave and the
    /// newest, and beside what the system has taken for the way.
    static constexpr std::size_t maximumUnsentBytes = 32U << 20U;

    /// Closes the connection at once; what waits to be sent is lost.
    virtual ~StreamConnection() = default;

    /// Called with each new state. A peer that has vanished without a word (a pulled cable) is
    /// noticed within 10 seconds, one that has closed also while input from it is still unread.
    std::function<void(State)> onStateChange;

    /// Opens the connection; called once, when `onStateChange` is in place.
    virtual void start() = 0;

    /// Of one that failed before it was ready: whether the other computer is there and says that it
    /// has the service, but nobody took the call. Known a moment after the failure.
    virtual bool wasRefused() const = 0;

    /// Queues a message, which is not empty; before the connection is ready it waits for that.
    /// Never blocks, and no failure is told but by the state. Each message must be a snapshot,
    /// complete in itself: when more than `maximumUnsentBytes` would wait, a new one takes the
    /// place of all those of which no byte has left.
    virtual void send(Message message) = 0;

    /// Completes with `minimum` (1 or more) to `maximum` bytes as soon as so many have arrived.
    /// When the connection ends before, it completes with what did arrive or with nothing, and only
    /// then the new state is told. One at a time.
    virtual void receive(std::size_t minimum, std::size_t maximum, Completion completion) = 0;

    /// Closes the connection like its destruction, but tells the new state.
    virtual void cancel() = 0;
};

}  // namespace tessivo
