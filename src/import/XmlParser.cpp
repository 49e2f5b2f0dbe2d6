#include "import/XmlParser.h"

#include <expat.h>

#include <cstddef>
#include <cstdlib>

namespace tessivo {
namespace {

constexpr std::size_t memoryLimit = std::size_t{16} * 1024 * 1024;
/// What the parser of this thread holds. expat's allocator functions get no context to count in.
thread_local std::size_t memoryInUse = 0;

/// Stands before each allocation, since free() doesn't tell how much it gives back.
struct alignas(std::max_align_t) Header {
    std::size_t size;
};

void* resize(void* memory, std::size_t size) {
    Header* old = memory ? static_cast<Header*>(memory) - 1 : nullptr;
    const std::size_t oldSize = old ? old->size : 0;
    if (size > memoryLimit || memoryInUse - oldSize > memoryLimit - size) {
        return nullptr;
    }
    auto* header = static_cast<Header*>(std::realloc(old, sizeof(Header) + size));
    if (!header) {
        return nullptr;
    }
    memoryInUse = memoryInUse - oldSize + size;
    header->size = size;
    return header + 1;
}

void* allocate(std::size_t size) {
    return resize(nullptr, size);
}

void release(void* memory) {
    if (memory) {
        Header* header = static_cast<Header*>(memory) - 1;
        memoryInUse -= header->size;
        std::free(header);
    }
}

constexpr XML_Memory_Handling_Suite boundedMemory = {allocate, resize, release};

XML_Parser asParser(void* argument) {
    return static_cast<XML_Parser>(argument);
}

XmlEvents& eventsOf(void* parser) {
    return *static_cast<XmlEvents*>(XML_GetUserData(asParser(parser)));
}

void onStart(void* parser, const XML_Char* name, const XML_Char** attributes) {
    eventsOf(parser).startElement(name, XmlAttributes(attributes));
}

void onEnd(void* parser, const XML_Char* name) {
    eventsOf(parser).endElement(name);
}

void onCharacters(void* parser, const XML_Char* text, int length) {
    eventsOf(parser).characters({text, static_cast<std::size_t>(length)});
}

/// Entities and default attributes, which can multiply, are declared in an internal subset only:
/// nothing outside the document is ever loaded.
void onDocumentType(void* parser, const XML_Char*, const XML_Char*, const XML_Char*,
                    int hasInternalSubset) {
    if (hasInternalSubset != 0) {
        XML_StopParser(asParser(parser), XML_FALSE);
    }
}

}  // namespace

std::optional<std::string_view> XmlAttributes::find(std::string_view name) const {
    for (const char* const* pair = pairs_; *pair; pair += 2) {
        if (pair[0] == name) {
            return pair[1];
        }
    }
    return std::nullopt;
}

XmlParser::XmlParser(XmlEvents& events)
    : parser_(XML_ParserCreate_MM(nullptr, &boundedMemory, nullptr)) {
    if (!parser_) {
        return;  // no memory: as if the document broke off at once
    }
    XML_SetUserData(parser_.get(), &events);
    XML_UseParserAsHandlerArg(parser_.get());
    XML_SetElementHandler(parser_.get(), onStart, onEnd);
    XML_SetCharacterDataHandler(parser_.get(), onCharacters);
    XML_SetStartDoctypeDeclHandler(parser_.get(), onDocumentType);
}

void XmlParser::feed(std::string_view piece) {
    if (parser_) {
        // After a fault expat refuses whatever follows, so its status needn't be kept.
        XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), XML_FALSE);
    }
}

void XmlParser::finish() {
    if (parser_) {
        XML_Parse(parser_.get(), nullptr, 0, XML_TRUE);
    }
}

void XmlParser::Deleter::operator()(XML_ParserStruct* parser) const {
    XML_ParserFree(parser);
}

}  // namespace tessivo
