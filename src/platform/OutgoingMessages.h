#pragma once

#include "platform/StreamConnection.h"

#include <cstddef>
#include <deque>
#include <string_view>

namespace tessivo {

/// What waits to leave on one connection: whole snapshots, in order, bounded. A peer that doesn't
/// read costs no more than that, and sees the newest snapshot once it reads again.
class OutgoingMessages {
public:
    static constexpr std::size_t limit = StreamConnection::maximumUnsentBytes;

    /// Appends `message`, in place of those of which no byte has left when more than `limit` bytes
    /// would wait. Only a message that has begun to leave and the newest one may exceed that.
    void push(StreamConnection::Message message);

    /// The bytes to leave next, all of one message; empty when none wait.
    std::string_view next() const;
    /// The first `count` bytes of `next()` have left.
    void advance(std::size_t count);

    /// How many bytes wait.
    std::size_t size() const { return size_; }

private:
    std::deque<StreamConnection::Message> messages_;
    std::size_t begun_ = 0;  // bytes of the first message that have left
    std::size_t size_ = 0;
};

}  // namespace tessivo
