#pragma once

#include <atomic>
#include <cstddef>

namespace tessivo {

/// An amount that many parts of a file take from, each as much as it turns out to need.
class Allowance {
public:
    explicit Allowance(std::size_t amount) : left_(amount) {}

    /// False when there isn't as much left; from then on there is nothing.
    bool spend(std::size_t amount) {
        const bool suffices = amount <= left_;
        left_ = suffices ? left_ - amount : 0;
        isExhausted_ = isExhausted_ || !suffices;
        return suffices;
    }
    bool isExhausted() const { return isExhausted_; }
    std::size_t left() const { return left_; }

private:
    std::size_t left_;
    bool isExhausted_ = false;
};

/// What reading one file may cost, whatever it claims: members that share their data, and sheets
/// that share a part, could ask for any amount otherwise.
struct ReadingLimits {
    /// In bytes of plain text, of which an ordinary computer parses as many in ten seconds.
    Allowance work{std::size_t{1600} * 1024 * 1024};
    /// In bytes that stay. With the file itself and the parser's 16 MiB a run sheet stays below
    /// 256 MiB; a million rows of four texts fit.
    Allowance memory{std::size_t{160} * 1024 * 1024};

    bool areExhausted() const { return work.isExhausted() || memory.isExhausted(); }
};

/// What the thread that works on a file and the one that waits for it tell each other.
struct WorkProgress {
    std::atomic<bool> isCancelled = false;  ///< the result isn't wanted any more, and may be void
    std::atomic<double> done = 0.0;         ///< roughly how much of it, from 0 to 1
};

}  // namespace tessivo
