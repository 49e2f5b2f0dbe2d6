#include "base/Signal.h"

#include <doctest/doctest.h>

#include <memory>
#include <string>

using tessivo::Signal;
using tessivo::Subscription;

TEST_CASE("a subscription ends with its owner, and may outlive the signal") {
    auto signal = std::make_unique<Signal<int>>();
    int sum = 0;
    Subscription outer;
    {
        Subscription inner = signal->subscribe([&](int value) { sum += value; });
        outer = signal->subscribe([&](int value) { sum += 10 * value; });
        signal->emit(1);
    }
    signal->emit(1);
    CHECK(sum == 21);
    signal.reset();
    outer.reset();
}

TEST_CASE("subscribers may end, add and destroy while the signal is emitting") {
    auto signal = std::make_unique<Signal<>>();
    std::string calls;
    Subscription first, second, added, last;
    first = signal->subscribe([&] {
        calls += "1";
        first.reset();
        second.reset();
        added = signal->subscribe([&] { calls += "a"; });
    });
    second = signal->subscribe([&] { calls += "2"; });
    last = signal->subscribe([&] { calls += "3"; });
    signal->emit();
    CHECK(calls == "13");
    signal->emit();
    CHECK(calls == "133a");

    last = signal->subscribe([&] { signal.reset(); });
    signal->emit();
    CHECK(signal == nullptr);
}
