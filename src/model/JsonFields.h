#pragma once

#include "base/Uuid.h"

#include <simdjson.h>

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

// RapidJSON adds to a null pointer when it asks whether an empty stack has room. That is harmless,
// but clang's sanitizer ends the program.
#ifdef __clang__
#pragma clang attribute push(__attribute__((no_sanitize("pointer-overflow"))), apply_to = function)
#endif
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#ifdef __clang__
#pragma clang attribute pop
#endif

/// How any record goes to JSON and back. A record takes part through one function beside it,
///
///     template <JsonRecord<Show> Record, typename Visit>
///     bool visitMembers(Record& show, Visit visit) { return visit("id", show.id) && ...; }
///
/// which names each member once, for reading and writing alike, and stops at the first false. A
/// field of type std::optional is an optional member. For the sources that encode or decode only:
/// nobody else needs to see the JSON libraries.
namespace tessivo {

/// Any type that is `T`, const or not.
template <typename Record, typename T>
concept JsonRecord = std::same_as<std::remove_const_t<Record>, T>;

namespace json {

using Value = simdjson::ondemand::value;
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

template <typename T>
constexpr bool isOptional = false;
template <typename T>
constexpr bool isOptional<std::optional<T>> = true;

// Reading: false when the value has another type, with `result` then unspecified. Values are met in
// the text's order and once only, so each is read when it is met, or never.
bool read(Value& value, std::string& result);
bool read(Value& value, std::int64_t& result);
bool read(Value& value, double& result);
bool read(Value& value, bool& result);
bool read(Value& value, Uuid& result);
template <typename T>
bool read(Value& value, std::optional<T>& result);
template <typename T>
bool read(Value& value, std::vector<T>& result);
template <typename Record>
bool read(Value& value, Record& result);

// Writing cannot fail: texts are valid UTF-8, numbers finite.
void write(Writer& writer, const std::string& text);
void write(Writer& writer, std::int64_t number);
void write(Writer& writer, double number);
void write(Writer& writer, bool truth);
void write(Writer& writer, const Uuid& uuid);
template <typename T>
void write(Writer& writer, const std::optional<T>& present);
template <typename T>
void write(Writer& writer, const std::vector<T>& list);
template <typename Record>
void write(Writer& writer, const Record& record);

/// Reads the members of one object, in any order. Of repeated ones the first counts; what the
/// record doesn't know is skipped.
template <typename Record>
bool readMembers(simdjson::ondemand::object object, Record& record) {
    unsigned read = 0;  // one bit for each member of the record
    for (auto member : object) {
        std::string_view name;
        Value value;
        if (member.unescaped_key().get(name) || member.value().get(value)) {
            return false;
        }
        unsigned bit = 1;
        const auto readInto = [&](std::string_view known, auto& field) {
            const bool isIt = known == name && (read & bit) == 0;
            read |= isIt ? bit : 0;
            bit <<= 1;
            return !isIt || json::read(value, field);
        };
        if (!visitMembers(record, readInto)) {
            return false;
        }
    }
    unsigned bit = 1;
    return visitMembers(record, [&]<typename Field>(std::string_view, const Field&) {
        const bool wasRead = (read & bit) != 0;
        bit <<= 1;
        return wasRead || isOptional<Field>;
    });
}

template <typename T>
bool read(Value& value, std::optional<T>& result) {
    bool isNull = false;
    return (!value.is_null().get(isNull) && isNull) || read(value, result.emplace());
}

template <typename T>
bool read(Value& value, std::vector<T>& result) {
    // A random identity for each, made only to be replaced, would cost more than all the reading.
    static const T blank{};
    simdjson::ondemand::array array;
    std::size_t count = 0;
    if (value.get_array().get(array) || array.count_elements().get(count)) {
        return false;
    }
    result.clear();
    result.reserve(count);
    for (auto item : array) {
        Value element;
        if (item.get(element) || !read(element, result.emplace_back(blank))) {
            return false;
        }
    }
    return true;
}

template <typename Record>
bool read(Value& value, Record& result) {
    simdjson::ondemand::object object;
    return !value.get_object().get(object) && readMembers(object, result);
}

template <typename T>
void write(Writer& writer, const std::optional<T>& present) {
    write(writer, *present);
}

template <typename T>
void write(Writer& writer, const std::vector<T>& list) {
    writer.StartArray();
    for (const T& element : list) {
        write(writer, element);
    }
    writer.EndArray();
}

template <typename Record>
void write(Writer& writer, const Record& record) {
    writer.StartObject();
    visitMembers(record, [&]<typename Field>(std::string_view name, const Field& field) {
        if constexpr (isOptional<Field>) {
            if (!field) {
                return true;
            }
        }
        writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
        write(writer, field);
        return true;
    });
    writer.EndObject();
}

template <typename Record>
std::string encode(const Record& record) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    write(writer, record);
    return {buffer.GetString(), buffer.GetSize()};
}

/// The whole record or nothing.
template <typename Record>
std::optional<Record> decode(std::string_view text) {
    if (text.starts_with("\uFEFF")) {
        text.remove_prefix(3);  // the mark that some editors put in front of UTF-8
    }
    const simdjson::padded_string padded(text);
    simdjson::ondemand::parser parser;
    simdjson::ondemand::document document;
    simdjson::ondemand::object object;
    std::optional<Record> record(std::in_place);
    if (parser.iterate(padded).get(document) || document.get_object().get(object) ||
        !readMembers(object, *record) ||
        document.current_location().error() != simdjson::OUT_OF_BOUNDS) {  // more text follows
        record.reset();
    }
    return record;
}

}  // namespace json
}  // namespace tessivo
