#include "base/JsonReader.h"

#include <cmath>
#include <limits>

namespace kelvo {

JsonReader::JsonReader(const Json& value) : value_(&value), root_(this) {
    if (!value.is_object()) error_ = "expected an object";
}

JsonReader::JsonReader(const Json& value, JsonReader& parent, const char* key, std::size_t index)
    : value_(&value), root_(parent.root_), parent_(&parent), key_(key), index_(index) {
    if (!value.is_object() && !root_->error_) root_->error_ = path() + ": expected an object";
}

std::string JsonReader::path() const {
    if (parent_ == nullptr) return {};
    const std::string above = parent_->path();
    return above + (above.empty() ? "" : ".") + key_ + "[" + std::to_string(index_) + "]";
}

void JsonReader::fail(const char* key, std::string_view what) {
    if (root_->error_) return;
    const std::string above = path();
    root_->error_ = above + (above.empty() ? "" : ".") + key + ": " + std::string(what);
}

const Json* JsonReader::optional(const char* key) {
    if (error()) return nullptr;
    const auto found = value_->find(key);
    if (found == value_->end() || found->is_null()) return nullptr;
    return &*found;
}

const Json* JsonReader::required(const char* key) {
    if (error()) return nullptr;
    const auto found = value_->find(key);
    if (found != value_->end()) return &*found;
    fail(key, "missing");
    return nullptr;
}

std::string JsonReader::string(const char* key) {
    const Json* member = required(key);
    if (member == nullptr) return {};
    if (member->is_string()) return member->get<std::string>();
    fail(key, "expected a string");
    return {};
}

double JsonReader::number(const char* key) {
    const Json* member = required(key);
    if (member == nullptr) return 0;
    if (member->is_number()) return member->get<double>();
    fail(key, "expected a number");
    return 0;
}

std::int64_t JsonReader::integer(const char* key) {
    const Json* member = required(key);
    if (member == nullptr) return 0;
    if (const auto whole = wholeNumber(*member)) return *whole;
    fail(key, "expected an integer");
    return 0;
}

bool JsonReader::boolean(const char* key) {
    const Json* member = required(key);
    if (member == nullptr) return false;
    if (member->is_boolean()) return member->get<bool>();
    fail(key, "expected true or false");
    return false;
}

std::optional<double> JsonReader::optionalNumber(const char* key) {
    const Json* member = optional(key);
    if (member == nullptr) return std::nullopt;
    if (member->is_number()) return member->get<double>();
    fail(key, "expected a number");
    return std::nullopt;
}

bool JsonReader::expectArray(const Json* member, const char* key) {
    if (member == nullptr) return false;
    if (member->is_array()) return true;
    fail(key, "expected an array");
    return false;
}

std::vector<std::string> JsonReader::strings(const char* key) {
    return onlyStrings(required(key), key).value_or(std::vector<std::string>{});
}

std::optional<std::vector<std::string>> JsonReader::optionalStrings(const char* key) {
    return onlyStrings(optional(key), key);
}

std::optional<std::vector<std::string>> JsonReader::onlyStrings(const Json* member,
                                                                const char* key) {
    if (!expectArray(member, key)) return std::nullopt;
    std::vector<std::string> strings;
    strings.reserve(member->size());
    for (const Json& element : *member) {
        if (!element.is_string()) {
            fail(key, "expected only strings");
            return std::nullopt;
        }
        strings.push_back(element.get<std::string>());
    }
    return strings;
}

std::optional<std::int64_t> wholeNumber(const Json& value) {
    if (value.is_number_unsigned()) {
        const auto number = value.get<std::uint64_t>();
        if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return {};
        return static_cast<std::int64_t>(number);
    }
    if (value.is_number_integer()) return value.get<std::int64_t>();
    if (!value.is_number_float()) return std::nullopt;
    const double number = value.get<double>();
    // 2^63 is the first double beyond the range. Its negative is refused too: the integer of that
    // value was read as one above, and what is left are smaller ones that were rounded up to it.
    constexpr double limit = 9223372036854775808.0;
    if (std::trunc(number) != number || number >= limit || number <= -limit) return std::nullopt;
    return static_cast<std::int64_t>(number);
}

} // namespace kelvo
