#include "platform/modelserver/SchemaFit.h"

#include "base/Json.h"

namespace kelvo {
namespace {

std::optional<std::string> misfit(const Json& value, const Json& schema, const std::string& path) {
    const std::string type = schema.value("type", "");
    if (type == "string" && !value.is_string()) return path + " is no string";
    if (type == "number" && !value.is_number()) return path + " is no number";
    if (type == "array") {
        if (!value.is_array()) return path + " is no list";
        const std::string each = path + "[]";
        for (const Json& element : value) {
            if (auto wrong = misfit(element, schema.at("items"), each)) return wrong;
        }
    }
    if (type == "object") {
        if (!value.is_object()) return path + " is no object";
        for (const Json& name : schema.at("required")) {
            if (!value.contains(name)) return path + "." + name.get<std::string>() + " is missing";
        }
        for (const auto& [name, inner] : schema.at("properties").items()) {
            const auto member = value.find(name);
            // null for a member that may be absent counts as absent.
            if (member == value.end() || member->is_null()) continue;
            std::string memberPath = path;
            memberPath.append(".").append(name);
            if (auto wrong = misfit(*member, inner, memberPath)) return wrong;
        }
        for (const Json& name : schema.at("required")) {
            if (value.at(name.get<std::string>()).is_null())
                return path + "." + name.get<std::string>() + " is null";
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> schemaMisfit(std::string_view document, std::string_view schema) {
    const auto value = parseJson(document);
    if (!value) return "the reply is no JSON: " + value.error();
    const auto shape = parseJson(schema);
    if (!shape) return "the schema is no JSON: " + shape.error();
    return misfit(*value, *shape, "reply");
}

} // namespace kelvo
