#include "compliance/ClosureReplay.h"

#include "base/Files.h"

#include <simdjson.h>

#include <optional>
#include <string_view>
#include <system_error>

namespace kelvo {
namespace {

/// The members of a record that decide. Of repeated keys the last one counts, so each member starts
/// anew whenever its key comes by.
struct Members {
    bool control = false;
    bool closed = false;
    bool evidenced = false;
    std::optional<std::string_view> criterion;
};

bool equalsOne(simdjson::dom::element value) {
    if (!value.is_number()) return false;
    double number = 0;
    return value.get_double().get(number) == simdjson::SUCCESS && number == 1.0;
}

std::optional<std::string_view> text(simdjson::dom::element value) {
    std::string_view content;
    if (value.get_string().get(content) != simdjson::SUCCESS) return std::nullopt;
    return content;
}

std::optional<std::string_view> closedCriterion(simdjson::dom::parser& parser,
                                                const std::string& bytes) {
    simdjson::dom::object record;
    if (parser.parse(bytes).get_object().get(record) != simdjson::SUCCESS) return std::nullopt;
    Members members;
    for (const auto& [key, value] : record) {
        if (key == "sourceDb") members.control = text(value) == "control";
        if (key == "gate_after") members.closed = equalsOne(value);
        if (key == "evidence_root") members.evidenced = !text(value).value_or("").empty();
        if (key == "criterion") members.criterion = text(value);
    }
    if (!members.control || !members.closed || !members.evidenced) return std::nullopt;
    return members.criterion;
}

} // namespace

CriterionIds sealedClosures(const std::filesystem::path& directory,
                            const CriterionIds& criterionIds) {
    CriterionIds closed;
    simdjson::dom::parser parser;
    std::error_code failed;
    std::filesystem::directory_iterator entry(directory, failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
        if (closed.size() == criterionIds.size()) break;
        if (!entry->path().native().ends_with(".totem.json")) continue;
        const auto bytes = readFile(entry->path(), largestRecordFile);
        if (!bytes) continue;
        const auto criterion = closedCriterion(parser, *bytes);
        if (criterion && criterionIds.contains(*criterion)) closed.emplace(*criterion);
    }
    return closed;
}

} // namespace kelvo
