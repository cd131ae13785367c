#pragma once

#include <optional>
#include <string>

namespace kelvo {

/// How the person can prove who they are on this device, beside the account's password.
enum class Biometry { none, fingerprint, face };

/// Asks the person at the keyboard to prove that they own this account.
class OwnerAuthentication {
public:
    virtual ~OwnerAuthentication() = default;

    /// None when a prompt can be shown now. Otherwise why not, in words for a person; the text is
    /// empty where the system gives no reason.
    virtual std::optional<std::string> unavailableReason() = 0;

    /// Shows the prompt with `reason` and returns when it is answered: true only for a person who
    /// proved their identity, false for a wrong answer and for a cancelled prompt. There is no time
    /// limit. The event loop keeps running meanwhile, so that the window repaints; the caller keeps
    /// other work away.
    virtual bool evaluate(const std::string& reason) = 0;

    /// What the system reports after the prompt was answered.
    virtual Biometry biometry() = 0;
};

} // namespace kelvo
