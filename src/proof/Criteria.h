#pragma once

#include <tl/expected.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// How often a criterion's control is due.
enum class Frequency { once, annual, semiannual, quarterly, monthly, weekly, daily, event };

/// "once", "annual", … as the readiness graph spells them.
std::string_view nameOf(Frequency frequency);

/// A node of the readiness graph with the members that only the proof reads.
struct Criterion {
    std::string id;
    double level = 0; ///< in the file: met from 1 up
    std::int64_t weight = 0;
    std::string gap; ///< what follows "GAP:" in the evidence text; "" where nothing does
    std::string title;
    std::vector<std::string> trustServices; ///< ids of the common criteria that it serves
    Frequency frequency = Frequency::annual;

    bool operator==(const Criterion&) const = default;
};

struct Criteria {
    std::string organisation;
    std::vector<Criterion> list; ///< in file order
    /// What is told about the file: a frequency that is none counts as annual.
    std::vector<std::string> remarks;

    bool operator==(const Criteria&) const = default;
};

/// Reads a readiness graph. The error says which required member is missing or wrong, as the
/// program's own reader has it; optional ones of another type count as absent.
tl::expected<Criteria, std::string> readCriteria(std::string_view graph);

} // namespace kelvo
