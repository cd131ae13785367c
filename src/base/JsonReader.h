#pragma once

#include "base/Json.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// Reads the members of one JSON object by name and type. The first failure is kept, with the path
/// of the member it concerns ("nodes[3].w: expected an integer"); after it every read returns an
/// empty value, so a caller reads all it needs and then asks `error()` once.
///
/// A Boolean is not a number, 3.0 counts as an integer, and null for an optional member counts as
/// absent. Readers of nested objects report to the reader they came from.
class JsonReader {
public:
    /// A reader of the document's top level, which must be an object. `value` must outlive it.
    explicit JsonReader(const Json& value);

    std::string string(const char* key);
    double number(const char* key);
    std::int64_t integer(const char* key);
    bool boolean(const char* key);
    std::optional<double> optionalNumber(const char* key);

    /// Calls `each(JsonReader&)` for every element of a required array of objects, in order, and
    /// stops at the first failure.
    template <class Each>
    void array(const char* key, Each each) {
        eachOf(required(key), key, each);
    }

    /// As `array` for a member that may be absent. True when it was present.
    template <class Each>
    bool optionalArray(const char* key, Each each) {
        const Json* member = optional(key);
        eachOf(member, key, each);
        return member != nullptr;
    }

    std::vector<std::string> strings(const char* key);

    /// An array of strings that may be absent.
    std::optional<std::vector<std::string>> optionalStrings(const char* key);

    /// Records a failure of the member `key` that only the caller can see, unless one is recorded.
    void fail(const char* key, std::string_view what);

    /// The first failure of this reader or of any reader it handed out.
    const std::optional<std::string>& error() const { return root_->error_; }

private:
    JsonReader(const Json& value, JsonReader& parent, const char* key, std::size_t index);

    const Json* required(const char* key);
    const Json* optional(const char* key);
    bool expectArray(const Json* member, const char* key);
    std::optional<std::vector<std::string>> onlyStrings(const Json* member, const char* key);
    std::string path() const;

    template <class Each>
    void eachOf(const Json* member, const char* key, Each each) {
        if (!expectArray(member, key)) return;
        std::size_t index = 0;
        for (const Json& element : *member) {
            JsonReader reader(element, *this, key, index++);
            if (error()) return;
            each(reader);
            if (error()) return;
        }
    }

    const Json* value_;
    JsonReader* root_;
    const JsonReader* parent_ = nullptr;
    const char* key_ = "";
    std::size_t index_ = 0;
    std::optional<std::string> error_;
};

/// The value as a 64-bit integer when it is a whole JSON number within range; 3.0 is one.
std::optional<std::int64_t> wholeNumber(const Json& value);

} // namespace kelvo
