#include "import/WorkbookParts.h"

#include <cassert>

namespace tessivo {

TextPool::Span TextPool::add(std::string_view text) {
    const std::size_t offset = bytes_.size();
    assert(offset <= capacity_);
    if (text.size() > capacity_ - offset) {
        return {static_cast<std::uint32_t>(offset), 0};
    }
    bytes_ += text;
    return {static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(text.size())};
}

void TextPool::append(std::string& text, std::string_view piece) const {
    if (text.size() <= capacity_) {
        text += piece;
    }
}

std::optional<TextPool::Span> SharedStringsParser::at(std::int64_t index) const {
    if (index < 0 || index >= std::ssize(ends_)) {
        return std::nullopt;
    }
    const auto position = static_cast<std::size_t>(index);
    const std::uint32_t start = position == 0 ? 0 : ends_[position - 1];
    assert(start <= ends_[position]);
    return TextPool::Span{start, ends_[position] - start};
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
        pool_.append(current_, text);
    }
}

void SharedStringsParser::endElement(std::string_view name) {
    if (name == "t") {
        inText_ = false;
    } else if (name == "si") {
        const TextPool::Span span = pool_.add(current_);
        ends_.push_back(span.offset + span.length);
    }
}

void WorkbookParser::startElement(std::string_view name, const XmlAttributes& attributes) {
    if (name != "sheet" || refs.size() == maximumSheets) {
        return;
    }
    const auto sheetName = attributes.find("name");
    const auto relId = attributes.find("r:id");
    if (sheetName && relId) {
        refs.push_back({std::string(*sheetName), std::string(*relId)});
    }
}

void RelsParser::startElement(std::string_view name, const XmlAttributes& attributes) {
    if (name != "Relationship" || targets.size() == maximumSheets) {
        return;
    }
    const auto id = attributes.find("Id");
    const auto target = attributes.find("Target");
    if (id && target && target->starts_with("worksheets/")) {
        targets.insert_or_assign(std::string(*id), std::string(*target));
    }
}

}  // namespace tessivo
