#include "proof/Waiting.h"

#include "base/Time.h"

#include <chrono>

namespace kelvo {

Waiting::Waiting(const ProofInput& input) : input_(input) {
}

const std::string& Waiting::since(const std::string& what) {
    const auto known = input_.state.missed.find(what);
    // A clock that was set back meanwhile starts the time anew.
    const bool earlier = known != input_.state.missed.end() && known->second <= input_.now;
    return missed_.try_emplace(what, earlier ? known->second : input_.now).first->second;
}

bool Waiting::stillArriving(const std::string& what) {
    const auto begin = parseIso8601(since(what));
    const auto now = parseIso8601(input_.now);
    return others_ && begin && now && *now - *begin < std::chrono::hours(24);
}

} // namespace kelvo
