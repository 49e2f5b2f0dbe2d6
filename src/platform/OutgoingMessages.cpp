#include "platform/OutgoingMessages.h"

#include <cassert>
#include <utility>

namespace tessivo {

void OutgoingMessages::push(StreamConnection::Message message) {
    assert(!message->empty());
    if (size_ + message->size() > limit) {
        const std::size_t kept = begun_ > 0 ? 1 : 0;
        while (messages_.size() > kept) {
            size_ -= messages_.back()->size();
            messages_.pop_back();
        }
    }
    size_ += message->size();
    messages_.push_back(std::move(message));
}

std::string_view OutgoingMessages::next() const {
    return messages_.empty() ? std::string_view()
                             : std::string_view(*messages_.front()).substr(begun_);
}

void OutgoingMessages::advance(std::size_t count) {
    assert(count <= next().size());
    begun_ += count;
    size_ -= count;
    if (!messages_.empty() && begun_ == messages_.front()->size()) {
        messages_.pop_front();
        begun_ = 0;
    }
}

}  // namespace tessivo
