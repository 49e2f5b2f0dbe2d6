#include "import/WorkbookParts.h"

#include <cstddef>

namespace tessivo {
namespace {

constexpr std::size_t sizeOfEntry = 128;  // of a map of texts by texts, about

}  // namespace

std::optional<TextPool::Span> SharedStringsParser::at(std::int64_t index) const {
    if (index < 0 || index >= std::ssize(texts_)) {
        return std::nullopt;
    }
    return texts_[static_cast<std::size_t>(index)];
}

void SharedStringsParser::startElement(std::string_view name, const XmlAttributes&) {
    if (name == "si") {
        current_.clear();
    } else if (name == "t") {
        inText_ = true;
    }
}

void SharedStringsParser::characters(std::string_view text) {
    if (inText_) {
        TextPool::append(current_, text);
    }
}

void SharedStringsParser::endElement(std::string_view name) {
    if (name == "t") {
        inText_ = false;
    } else if (name == "si") {
        const TextPool::Span text = pool_.add(current_, memory_);
        if (memory_.spend(sizeof text)) {
            texts_.push_back(text);
        }
    }
}

void WorkbookParser::startElement(std::string_view name, const XmlAttributes& attributes) {
    if (name != "sheet") {
        return;
    }
    const auto sheetName = attributes.find("name");
    const auto relId = attributes.find("r:id");
    if (sheetName && relId && memory_.spend(sizeof(SheetRef) + sheetName->size() + relId->size())) {
        refs.push_back({std::string(*sheetName), std::string(*relId)});
    }
}

void RelsParser::startElement(std::string_view name, const XmlAttributes& attributes) {
    if (name != "Relationship") {
        return;
    }
    const auto id = attributes.find("Id");
    const auto target = attributes.find("Target");
    if (id && target && target->starts_with("worksheets/") &&
        memory_.spend(sizeOfEntry + id->size() + target->size())) {
        targets.insert_or_assign(std::string(*id), std::string(*target));
    }
}

}  // namespace tessivo
