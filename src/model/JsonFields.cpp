#include "model/JsonFields.h"

#include "model/ShowJson.h"

#include <cmath>

namespace tessivo::json {
namespace {

constexpr unsigned parseFlags = rapidjson::kParseValidateEncodingFlag |
                                rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag;

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

}  // namespace

bool parse(std::string_view text, Document& document) {
    // The parser takes a raw NUL for the end of the text, and would not see what follows.
    if (text.find('\0') != std::string_view::npos || !isShallow(text)) {
        return false;
    }
    document.Parse<parseFlags>(text.data(), text.size());
    return !document.HasParseError();
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

void write(Writer& writer, const std::string& text) {
    writer.String(text.data(), sizeOf(text));
}

void write(Writer& writer, std::int64_t number) {
    writer.Int64(number);
}

void write(Writer& writer, double number) {
    writer.Double(number);
}

void write(Writer& writer, const Uuid& uuid) {
    write(writer, uuid.toText());
}

const Value* MemberReader::find(std::string_view name) const {
    const Value key(rapidjson::StringRef(name.data(), sizeOf(name)));
    const auto member = object_.FindMember(key);
    return member == object_.MemberEnd() ? nullptr : &member->value;
}

void MemberWriter::writeName(std::string_view name) const {
    writer_.Key(name.data(), sizeOf(name));
}

}  // namespace tessivo::json
