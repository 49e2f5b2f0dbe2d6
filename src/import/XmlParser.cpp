#include "import/XmlParser.h"

#include <expat.h>

#include <cassert>
#include <cstddef>
#include <cstdlib>
#include <cstring>

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
    assert(oldSize <= memoryInUse && memoryInUse <= memoryLimit);
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
        assert(header->size <= memoryInUse);
        memoryInUse -= header->size;
        std::free(header);
    }
}

constexpr XML_Memory_Handling_Suite boundedMemory = {allocate, resize, release};

/// In bytes of plain text; measured with documents of nothing else.
constexpr std::size_t workOfElement = 12;
constexpr std::size_t workOfAttribute = 12;
constexpr std::size_t workOfText = 3;  ///< as a line break of its own is one

}  // namespace

std::optional<std::string_view> XmlAttributes::find(std::string_view name) const {
    for (const char* const* pair = pairs_; *pair; pair += 2) {
        // Not measured first: most names differ at once, and a sheet has millions of them.
        if (pair[0][0] == name[0] && std::strncmp(pair[0], name.data(), name.size()) == 0 &&
            pair[0][name.size()] == '\0') {
            return pair[1];
        }
    }
    return std::nullopt;
}

XmlParser::XmlParser(XmlEvents& events)
    : events_(events), parser_(XML_ParserCreate_MM(nullptr, &boundedMemory, nullptr)) {
    if (!parser_) {
        return;  // no memory: as if the document broke off at once
    }
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(
        parser_.get(),
        [](void* self, const XML_Char* name, const XML_Char** attributes) {
            static_cast<XmlParser*>(self)->onStart(name, attributes);
        },
        [](void* self, const XML_Char* name) {
            static_cast<XmlParser*>(self)->events_.endElement(name);
        });
    XML_SetCharacterDataHandler(parser_.get(), [](void* self, const XML_Char* text, int length) {
        static_cast<XmlParser*>(self)->onCharacters({text, static_cast<std::size_t>(length)});
    });
    // Entities and default attributes, which can multiply, are declared in an internal subset only:
    // nothing outside the document is ever loaded.
    XML_SetStartDoctypeDeclHandler(parser_.get(), [](void* self, const XML_Char*, const XML_Char*,
                                                     const XML_Char*, int hasInternalSubset) {
        if (hasInternalSubset != 0) {
            XML_StopParser(static_cast<XmlParser*>(self)->parser_.get(), XML_FALSE);
        }
    });
}

void XmlParser::feed(std::string_view piece) {
    // For want of memory expat leaves a piece out, and would go on with the next one that fits.
    if (parser_ && XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()),
                             XML_FALSE) != XML_STATUS_OK) {
        parser_.reset();
    }
}

void XmlParser::finish() {
    if (parser_) {
        XML_Parse(parser_.get(), nullptr, 0, XML_TRUE);
    }
}

void XmlParser::onStart(const char* name, const char* const* attributes) {
    const int namesAndValues = XML_GetSpecifiedAttributeCount(parser_.get());
    extraWork_ += workOfElement + workOfAttribute * static_cast<std::size_t>(namesAndValues / 2);
    events_.startElement(name, XmlAttributes(attributes));
}

void XmlParser::onCharacters(std::string_view text) {
    extraWork_ += workOfText;
    events_.characters(text);
}

void XmlParser::Deleter::operator()(XML_ParserStruct* parser) const {
    XML_ParserFree(parser);
}

}  // namespace tessivo
