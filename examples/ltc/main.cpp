#include "ltc/LtcTool.h"

#include <iostream>
#include <vector>

int main(int argumentCount, char** arguments) {
    const std::vector<std::string_view> texts(arguments + 1, arguments + argumentCount);
    return static_cast<int>(tessivo::ltc::runLtcTool(texts, std::cout, std::cerr));
}
