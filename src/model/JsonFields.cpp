#include "model/JsonFields.h"

#include "model/ShowJson.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
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

constexpr bool needsEscape(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

constexpr std::size_t longestEscape = 6;

char* writeEscape(char* at, char c) {
    static constexpr char digits[] = "0123456789ABCDEF";
    *at++ = '\\';
    if (c == '"' || c == '\\') {
        *at++ = c;
        return at;
    }
    at = std::ranges::copy(std::string_view("u00"), at).out;
    *at++ = digits[c >> 4];
    *at++ = digits[c & 0x0F];
    return at;
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

// RFC 8259, 7: what must be escaped, and nothing else.
void Writer::write(const std::string& text) {
    constexpr std::size_t blockSize = 4096;  // bounds the room that is asked for
    put('"');
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view block = rest.substr(0, blockSize);
        char* at = room(longestEscape * block.size());
        for (const char c : block) {
            if (needsEscape(c)) {
                at = writeEscape(at, c);
            } else {
                *at++ = c;
            }
        }
        wroteUpTo(at);
        rest.remove_prefix(block.size());
    }
    put('"');
}

void Writer::write(std::int64_t number) {
    writeNumber(number);
}

void Writer::write(double number) {
    writeNumber(number);
}

void Writer::write(const Uuid& uuid) {
    char* at = room(Uuid::textLength + 2);
    *at++ = '"';
    uuid.writeText(at);
    at += Uuid::textLength;
    *at++ = '"';
    wroteUpTo(at);
}

void Writer::writeName(std::string_view name) {
    separate('{');
    char* at = room(name.size() + 3);
    *at++ = '"';
    at = std::ranges::copy(name, at).out;
    *at++ = '"';
    *at++ = ':';
    wroteUpTo(at);
}

/// The shortest decimal form that reads back to the same value.
template <typename Number>
void Writer::writeNumber(Number number) {
    constexpr std::size_t longest = 32;
    char* at = room(longest);
    wroteUpTo(std::to_chars(at, at + longest, number).ptr);
}

char* Writer::room(std::size_t count) {
    if (json_.size() - size_ < count) {
        json_.resize(2 * json_.size() + count);
    }
    return json_.data() + size_;
}

}  // namespace tessivo::json
