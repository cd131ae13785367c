#pragma once

#include "ports/Account.h"

#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// The account that this process really runs as, from the account database; no variable of the
/// environment is asked.
class SystemAccount : public Account {
public:
    /// The first field of the account's gecos entry, as UTF-8.
    std::string fullName() const override;

    /// The login name of the real user id; none when the database has no such account.
    static std::optional<std::string> loginName();

    /// What stands before the first comma of a gecos entry, without white space around it.
    static std::string nameInGecos(std::string_view gecos);
};

} // namespace kelvo
