#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace tessivo::test {

/// Whether `actual` is, byte for byte, the content of tests/golden/`name`. If not, it is written
/// beside that file as `name`.actual, to be looked at and, if right, to take its place.
inline bool matchesGolden(const std::string& name, std::string_view actual) {
    const auto path = std::filesystem::path(TESSIVO_SOURCE_DIR) / "tests" / "golden" / name;
    auto actualPath = path;
    actualPath += ".actual";
    std::ostringstream expected;
    expected << std::ifstream(path, std::ios::binary).rdbuf();
    if (expected.str() == actual) {
        std::filesystem::remove(actualPath);
        return true;
    }
    std::ofstream(actualPath, std::ios::binary) << actual;
    return false;
}

}  // namespace tessivo::test
