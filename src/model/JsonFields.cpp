#include "model/JsonFields.h"

#include <charconv>
#include <cmath>
#include <iterator>

namespace tessivo::json {

bool read(Value& value, std::string& result) {
    std::string_view text;
    if (value.get_string().get(text)) {
        return false;
    }
    result = text;
    return true;
}

bool read(Value& value, std::int64_t& result) {
    if (!value.get_int64().get(result)) {
        return true;
    }
    // Written with a fraction or an exponent, or outside the range: both ends are left out because
    // a number just outside of them rounds to them.
    double number = 0.0;
    constexpr double end = 0x1p63;
    if (!read(value, number) || !(number > -end && number < end) || std::trunc(number) != number) {
        return false;
    }
    result = static_cast<std::int64_t>(number);
    return true;
}

bool read(Value& value, double& result) {
    return !value.get_double().get(result);
}

bool read(Value& value, bool& result) {
    return !value.get_bool().get(result);
}

bool read(Value& value, Uuid& result) {
    std::string_view text;
    const auto uuid = value.get_string().get(text) ? std::nullopt : Uuid::fromText(text);
    result = uuid.value_or(Uuid{});
    return uuid.has_value();
}

void write(Writer& writer, const std::string& text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void write(Writer& writer, std::int64_t number) {
    writer.Int64(number);
}

/// The shortest form that reads back to the same value; the writer's own has ".0" behind integers.
void write(Writer& writer, double number) {
    char text[32];
    const char* end = std::to_chars(std::begin(text), std::end(text), number).ptr;
    writer.RawValue(text, static_cast<std::size_t>(end - text), rapidjson::kNumberType);
}

void write(Writer& writer, bool truth) {
    writer.Bool(truth);
}

void write(Writer& writer, const Uuid& uuid) {
    write(writer, uuid.toText());
}

}  // namespace tessivo::json
