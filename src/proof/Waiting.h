#pragma once

#include "proof/ProofComparison.h"

#include <map>
#include <string>

namespace kelvo {

/// Since when what is not there has been missed. Where there is another log it may still be on its
/// way for 24 hours.
class Waiting {
public:
    explicit Waiting(const ProofInput& input);

    void othersExist(bool exist) { others_ = exist; }

    /// Notes that `what` is missed; true while it counts as arriving.
    bool stillArriving(const std::string& what);

    /// Since when `what` is missed (ISO 8601), noting it.
    const std::string& since(const std::string& what);

    /// Everything that was missed this time, for the next.
    const std::map<std::string, std::string>& missed() const { return missed_; }

private:
    const ProofInput& input_;
    bool others_ = false;
    std::map<std::string, std::string> missed_;
};

} // namespace kelvo
