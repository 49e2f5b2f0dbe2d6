#pragma once

#include "base/Uuid.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
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

/// Writes one value as JSON. That cannot fail: texts are valid UTF-8, numbers finite.
class Writer {
public:
    /// `storage` gives its memory to the text, and loses its content.
    explicit Writer(std::string storage) : json_(std::move(storage)) {
        json_.resize(json_.capacity());
    }
    /// The whole text, once.
    std::string take() {
        json_.resize(size_);
        return std::move(json_);
    }

    void write(const std::string& text);
    void write(std::int64_t number);
    void write(double number);
    void write(const Uuid& uuid);
    template <typename RecordOrRange>
    void write(const RecordOrRange& value);

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
    template <typename Number>
    void writeNumber(Number number);

    /// Where the next characters go, at most `count` of them; `wroteUpTo` tells how far they went.
    char* room(std::size_t count);
    void wroteUpTo(const char* end) { size_ = static_cast<std::size_t>(end - json_.data()); }
    void put(char c) {
        *room(1) = c;
        ++size_;
    }
    /// Writes the comma before every element but the first; no value ends in an opening bracket.
    void separate(char opening) {
        if (json_[size_ - 1] != opening) {
            put(',');
        }
    }

    std::string json_;      // longer than what is written: appending piece by piece is slower
    std::size_t size_ = 0;  // what is written
};

template <typename T>
bool read(const Value& value, std::vector<T>& result) {
    if (!value.IsArray()) {
        return false;
    }
    // A random identity for each, made only to be replaced, would cost more than all the reading.
    static const T blank{};
    result.clear();
    result.reserve(value.Size());
    return std::ranges::all_of(value.GetArray(), [&](const Value& element) {
        return read(element, result.emplace_back(blank));
    });
}

template <typename Record>
bool read(const Value& value, Record& result) {
    return value.IsObject() && visitMembers(result, MemberReader(value));
}

template <typename RecordOrRange>
void Writer::write(const RecordOrRange& value) {
    if constexpr (std::ranges::range<RecordOrRange>) {
        put('[');
        for (const auto& element : value) {
            separate('[');
            write(element);
        }
        put(']');
    } else {
        put('{');
        visitMembers(value, [this](std::string_view name, const auto& field) {
            return this->writeMember(name, field);
        });
        put('}');
    }
}

template <typename Record>
std::string encode(const Record& record, std::string storage = {}) {
    Writer writer(std::move(storage));
    writer.write(record);
    return writer.take();
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
