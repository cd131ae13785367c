#pragma once

#include "base/Json.h"
#include "base/JsonReader.h"

#include <cstddef>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace kelvo {

/// One field of a record that a model fills: its name, its place in the record, and the guide that
/// the model is given. The type follows from the member.
template <class Record, class Member>
struct GenerableField {
    const char* name;
    Member Record::*member;
    const char* description;
};

template <class Record, class Member>
constexpr GenerableField<Record, Member> field(const char* name, Member Record::*member,
                                               const char* description) {
    return {name, member, description};
}

/// The declaration of a generable record: `name` and `fields`, a tuple of GenerableField in the
/// order in which the model fills them. The JSON Schema and the reader both come from it.
template <class Record>
struct Generable;

namespace generable {

template <class T>
struct IsVector : std::false_type {};
template <class T>
struct IsVector<std::vector<T>> : std::true_type {};

using Schema = nlohmann::ordered_json;

template <class Record>
Schema recordSchema();

template <class Member>
Schema typeSchema() {
    if constexpr (std::is_same_v<Member, std::string>) {
        return {{"type", "string"}};
    } else if constexpr (std::is_same_v<Member, std::optional<double>>) {
        return {{"type", "number"}};
    } else if constexpr (IsVector<Member>::value) {
        return {{"type", "array"}, {"items", typeSchema<typename Member::value_type>()}};
    } else {
        return recordSchema<Member>();
    }
}

template <class Record>
Schema recordSchema() {
    Schema properties = Schema::object();
    Schema required = Schema::array();
    const auto add = [&]<class Member>(const GenerableField<Record, Member>& declared) {
        // The description stands first so that a model reading on has it before the type.
        Schema schema = {{"description", declared.description}};
        schema.update(typeSchema<Member>());
        properties[declared.name] = std::move(schema);
        if constexpr (!std::is_same_v<Member, std::optional<double>>) {
            required.push_back(declared.name);
        }
    };
    std::apply([&](const auto&... declared) { (add(declared), ...); }, Generable<Record>::fields);
    return {{"type", "object"},
            {"properties", std::move(properties)},
            {"required", std::move(required)},
            {"additionalProperties", false}};
}

template <class Record>
void readRecord(JsonReader& reader, Record& record);

template <class Member>
void readMember(JsonReader& reader, const char* name, Member& member) {
    if constexpr (std::is_same_v<Member, std::string>) {
        member = reader.string(name);
    } else if constexpr (std::is_same_v<Member, std::optional<double>>) {
        member = reader.optionalNumber(name);
    } else if constexpr (std::is_same_v<Member, std::vector<std::string>>) {
        member = reader.strings(name);
    } else {
        reader.array(
            name, [&member](JsonReader& element) { readRecord(element, member.emplace_back()); });
    }
}

template <class Record>
void readRecord(JsonReader& reader, Record& record) {
    std::apply(
        [&](const auto&... declared) {
            (readMember(reader, declared.name, record.*declared.member), ...);
        },
        Generable<Record>::fields);
}

} // namespace generable

/// The record's JSON Schema as compact text, properties in declaration order, no property allowed
/// beside them.
template <class Record>
std::string jsonSchema() {
    return generable::recordSchema<Record>().dump();
}

/// Reads a record from a JSON document. A missing or mistyped field is an error that names it;
/// fields that the record does not have are ignored.
template <class Record>
tl::expected<Record, std::string> readGenerable(std::string_view text) {
    const auto parsed = parseJson(text);
    if (!parsed) return tl::unexpected(parsed.error());
    JsonReader reader(*parsed);
    Record record;
    generable::readRecord(reader, record);
    if (reader.error()) return tl::unexpected(*reader.error());
    return record;
}

} // namespace kelvo
