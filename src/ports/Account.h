#pragma once

#include <string>

namespace kelvo {

/// The account that this process runs as.
class Account {
public:
    virtual ~Account() = default;

    /// The person's full name as the system knows it; empty when it knows none.
    virtual std::string fullName() const = 0;
};

} // namespace kelvo
