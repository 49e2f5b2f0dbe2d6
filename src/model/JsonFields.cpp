#include "model/JsonFields.h"

#include "model/ShowJson.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <charconv>
#include <cmath>
#include <system_error>

namespace tessivo::json {
namespace {

constexpr unsigned parseFlags = rapidjson::kParseValidateEncodingFlag |
                                rapidjson::kParseNumbersAsStringsFlag |
                                rapidjson::kParseIterativeFlag;

/// Whether the text nests no deeper than `maximumJsonDepth`. Up to the first syntax error it sees
/// the same strings and brackets as the parser, and the parser goes no further than that.
bool isShallow(std::string_view text) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            i += c == '\\' ? 1 : 0;
            inString = c != '"';
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > maximumJsonDepth) {
                return false;
            }
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return true;
}

/// The parser lets a lone escaped low surrogate through (\uDC00 to \uDFFF), and writes it as the
/// three bytes that UTF-8 forbids; raw ones it refuses.
bool holdsLoneSurrogate(std::string_view text) {
    for (auto i = text.find('\xED'); i != std::string_view::npos; i = text.find('\xED', i + 1)) {
        // What is valid otherwise has a second byte here.
        if (static_cast<unsigned char>(text[i + 1]) >= 0xA0) {
            return true;
        }
    }
    return false;
}

rapidjson::SizeType sizeOf(std::string_view text) {
    return static_cast<rapidjson::SizeType>(text.size());
}

std::string_view textOf(const Value& value) {
    return {value.GetString(), value.GetStringLength()};
}

/// Builds a document from the parser's events, reading the numbers itself: the parser's own reading
/// has undefined results for some that only an attacker writes, such as 0e-50.
class DocumentBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, DocumentBuilder> {
public:
    explicit DocumentBuilder(Document& document) : document_(document) {}

    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        const char* const end = text + length;
        std::int64_t integer = 0;
        if (const auto [stop, error] = std::from_chars(text, end, integer);
            error == std::errc() && stop == end) {
            return document_.Int64(integer);
        }
        double number = 0.0;
        return std::from_chars(text, end, number).ec == std::errc() && document_.Double(number);
    }
    bool Default() { return false; }  // numbers come in no other way
    bool Null() { return document_.Null(); }
    bool Bool(bool value) { return document_.Bool(value); }
    bool String(const char* text, rapidjson::SizeType length, bool copy) {
        return document_.String(text, length, copy);
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) {
        return document_.Key(text, length, copy);
    }
    bool StartObject() { return document_.StartObject(); }
    bool EndObject(rapidjson::SizeType count) { return document_.EndObject(count); }
    bool StartArray() { return document_.StartArray(); }
    bool EndArray(rapidjson::SizeType count) { return document_.EndArray(count); }

private:
    Document& document_;
};

}  // namespace

bool parse(std::string_view text, Document& document) {
    // The parser takes a raw NUL for the end of the text, and would not see what follows.
    if (text.find('\0') != std::string_view::npos || !isShallow(text)) {
        return false;
    }
    rapidjson::MemoryStream bytes(text.data(), text.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
    rapidjson::ParseResult result;
    const auto build = [&](Document& target) {
        DocumentBuilder builder(target);
        result = rapidjson::Reader().Parse<parseFlags>(stream, builder);
        return !result.IsError();
    };
    document.Populate(build);
    return !result.IsError();
}

bool read(const Value& value, std::string& result) {
    if (!value.IsString() || holdsLoneSurrogate(textOf(value))) {
        return false;
    }
    result = textOf(value);
    return true;
}

bool read(const Value& value, std::int64_t& result) {
    if (value.IsInt64()) {
        result = value.GetInt64();
        return true;
    }
    if (!value.IsDouble()) {
        return false;
    }
    // Written with a fraction or an exponent, or below the range: both ends are left out because a
    // number just outside of them rounds to them.
    const double number = value.GetDouble();
    constexpr double end = 0x1p63;
    if (!(number > -end && number < end) || std::trunc(number) != number) {
        return false;
    }
    result = static_cast<std::int64_t>(number);
    return true;
}

bool read(const Value& value, double& result) {
    if (!value.IsNumber()) {
        return false;
    }
    result = value.GetDouble();
    return true;
}

bool read(const Value& value, Uuid& result) {
    const auto uuid = value.IsString() ? Uuid::fromText(textOf(value)) : std::nullopt;
    result = uuid.value_or(Uuid{});
    return uuid.has_value();
}

const Value* MemberReader::find(std::string_view name) const {
    const Value key(rapidjson::StringRef(name.data(), sizeOf(name)));
    const auto member = object_.FindMember(key);
    return member == object_.MemberEnd() ? nullptr : &member->value;
}

Writer::Writer() = default;
Writer::~Writer() = default;

void Writer::write(const std::string& text) {
    writer_.String(text.data(), sizeOf(text));
}
void Writer::write(std::int64_t number) {
    writer_.Int64(number);
}
void Writer::write(double number) {
    writer_.Double(number);
}
void Writer::write(const Uuid& uuid) {
    write(uuid.toText());
}

std::string Writer::json() const {
    return {buffer_.GetString(), buffer_.GetSize()};
}

void Writer::writeName(std::string_view name) {
    writer_.Key(name.data(), sizeOf(name));
}
void Writer::startArray() {
    writer_.StartArray();
}
void Writer::endArray() {
    writer_.EndArray();
}
void Writer::startObject() {
    writer_.StartObject();
}
void Writer::endObject() {
    writer_.EndObject();
}

}  // namespace tessivo::json
