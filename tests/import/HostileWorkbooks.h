#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo::test {

/// A small file that asks for a lot of memory or time.
struct HostileWorkbook {
    std::string_view name;
    std::function<std::string()> make;
};

/// One for each way that we know of, all under 10 MiB.
const std::vector<HostileWorkbook>& hostileWorkbooks();

}  // namespace tessivo::test
