#pragma once

#include "base/Uuid.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// How any record goes to JSON and back. A record takes part through one function beside it,
///
///     template <JsonRecord<Show> Record, typename Visit>
///     bool visitMembers(Record& show, Visit visit) { return visit("id", show.id) && ...; }
///
/// which names each member once, for reading and writing alike, and stops at the first false. A
/// field of type std::optional is an optional member. For the sources that encode or decode only:
/// nobody else needs to see the JSON library.
namespace tessivo {

/// Any type that is `T`, const or not.
template <typename Record, typename T>
concept JsonRecord = std::same_as<std::remove_const_t<Record>, T>;

namespace json {

using rapidjson::Document;
using rapidjson::Value;

/// Parses one whole document, as strictly as `decodeShow` promises; false when it is none. The
/// memory taken is at most proportional to the text's length.
bool parse(std::string_view text, Document& document);

// Reading: false when the value has another type, with `result` then unspecified.
bool read(const Value& value, std::string& result);
bool read(const Value& value, std::int64_t& result);
bool read(const Value& value, double& result);
bool read(const Value& value, Uuid& result);
template <typename T>
bool read(const Value& value, std::vector<T>& result);
template <typename Record>
bool read(const Value& value, Record& result);

/// Reads the members of one object; any order, others ignored.
class MemberReader {
public:
    explicit MemberReader(const Value& object) : object_(object) {}

    template <typename T>
    bool operator()(std::string_view name, T& field) const {
        const Value* member = find(name);
        return member != nullptr && read(*member, field);
    }
    template <typename T>
    bool operator()(std::string_view name, std::optional<T>& field) const {
        const Value* member = find(name);
        if (member == nullptr || member->IsNull()) {
            field.reset();
            return true;
        }
        return read(*member, field.emplace());
    }

private:
    const Value* find(std::string_view name) const;

    const Value& object_;
};

/// Writes one value. That cannot fail: texts are valid UTF-8, numbers finite.
class Writer {
public:
    Writer();
    ~Writer();

    void write(const std::string& text);
    void write(std::int64_t number);
    void write(double number);
    void write(const Uuid& uuid);
    template <typename RecordOrRange>
    void write(const RecordOrRange& value);

    std::string json() const;

private:
    template <typename T>
    bool writeMember(std::string_view name, const T& field) {
        writeName(name);
        write(field);
        return true;
    }
    template <typename T>
    bool writeMember(std::string_view name, const std::optional<T>& field) {
        return !field || writeMember(name, *field);
    }
    void writeName(std::string_view name);
    void startArray();
    void endArray();
    void startObject();
    void endObject();

    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer> writer_{buffer_};
};

template <typename T>
bool read(const Value& value, std::vector<T>& result) {
    if (!value.IsArray()) {
        return false;
    }
    result.clear();
    result.reserve(value.Size());
    return std::ranges::all_of(value.GetArray(), [&result](const Value& element) {
        return read(element, result.emplace_back());
    });
}

template <typename Record>
bool read(const Value& value, Record& result) {
    return value.IsObject() && visitMembers(result, MemberReader(value));
}

template <typename RecordOrRange>
void Writer::write(const RecordOrRange& value) {
    if constexpr (std::ranges::range<RecordOrRange>) {
        startArray();
        for (const auto& element : value) {
            write(element);
        }
        endArray();
    } else {
        startObject();
        visitMembers(value, [this](std::string_view name, const auto& field) {
            return this->writeMember(name, field);
        });
        endObject();
    }
}

template <typename Record>
std::string encode(const Record& record) {
    Writer writer;
    writer.write(record);
    return writer.json();
}

/// The whole record or nothing.
template <typename Record>
std::optional<Record> decode(std::string_view text) {
    Document document;
    std::optional<Record> record(std::in_place);
    if (!parse(text, document) || !read(document, *record)) {
        record.reset();
    }
    return record;
}

}  // namespace json
}  // namespace tessivo
