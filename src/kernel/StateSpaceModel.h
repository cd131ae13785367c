#pragma once

#include "kernel/StateSpace.h"
#include "kernel/Tape.h"

#include <map>
#include <string>
#include <vector>

namespace kelvo::kernel_detail {

/// What the copies of a StateSpace share.
struct Model {
    /// Bonds whose product of effort and flow is summed up, with the sign of the power.
    struct PowerTerm {
        Index bond = 0;
        double sign = 1;
    };

    BondGraph graph;
    std::vector<StateVar> states{};
    std::vector<std::string> sourceIds{};
    std::map<std::string, std::size_t, std::less<>> slotOfSource{};
    std::vector<PowerTerm> stored{}; ///< one a state variable
    std::vector<PowerTerm> driven{}; ///< one a source
    Program program{};
};

} // namespace kelvo::kernel_detail
