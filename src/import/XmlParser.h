#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

struct XML_ParserStruct;

namespace tessivo {

/// The attributes of one element, as they are written, prefix included.
class XmlAttributes {
public:
    /// `pairs` alternates names and values and ends with a null pointer.
    explicit XmlAttributes(const char* const* pairs) : pairs_(pairs) {}
    /// `name` isn't empty and ends in a NUL, as a literal does.
    std::optional<std::string_view> find(std::string_view name) const;

private:
    const char* const* pairs_;
};

/// What a part of a document tells as it is parsed. One text may come in several pieces. Views are
/// valid during the call only.
class XmlEvents {
public:
    virtual ~XmlEvents() = default;
    virtual void startElement(std::string_view name, const XmlAttributes& attributes) = 0;
    virtual void characters(std::string_view /*text*/) {}
    virtual void endElement(std::string_view /*name*/) {}
};

/// Parses one XML document piece by piece. Names are taken literally, prefix included. At the first
/// fault the events end, and what came before stands. Three things count as faults that are none in
/// XML, because they let a small file cost much: a document type with declarations of its own
/// (which ECMA-376-2 forbids in spreadsheets), and elements nested so deep or names so many that
/// the parser would need over 16 MiB for itself.
class XmlParser {
public:
    /// `events` must outlive the parser.
    explicit XmlParser(XmlEvents& events);
    XmlParser(const XmlParser&) = delete;
    XmlParser& operator=(const XmlParser&) = delete;

    void feed(std::string_view piece);
    /// Tells the parser that there is no more.
    void finish();

    /// What the events so far took to parse, beside their bytes, as the number of bytes of plain
    /// text that take as long: a document of nothing but tags takes ten times as long as one text.
    std::size_t extraWork() const { return extraWork_; }

private:
    void onStart(const char* name, const char* const* attributes);
    void onCharacters(std::string_view text);

    struct Deleter {
        void operator()(XML_ParserStruct* parser) const;
    };
    XmlEvents& events_;
    std::size_t extraWork_ = 0;
    std::unique_ptr<XML_ParserStruct, Deleter> parser_;
};

}  // namespace tessivo
