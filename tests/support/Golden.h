#pragma once

#include <fstream>
#include <sstream>
#include <string>

namespace tessivo {

/// The whole content of a file; empty when it can't be read.
inline std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return std::move(content).str();
}

/// Whether tests/golden/`name` holds `actual`. When it doesn't, `actual` is written beside it as
/// `name`.actual, to be looked at and, if it is right, to take its place.
inline bool matchesGolden(const std::string& name, const std::string& actual) {
    const std::string path = std::string(TESSIVO_SOURCE_DIR "/tests/golden/") + name;
    if (readFile(path) == actual) {
        return true;
    }
    std::ofstream(path + ".actual", std::ios::binary) << actual;
    return false;
}

}  // namespace tessivo
