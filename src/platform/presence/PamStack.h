#pragma once

#include "platform/presence/SecretText.h"

#include <optional>
#include <string>

struct pam_conv;
struct pam_handle;

namespace kelvo {

/// The person's side of a PAM conversation. Called on the thread that runs the stack; both may
/// block it.
class PamConversation {
public:
    virtual ~PamConversation() = default;

    /// Shows what a module has to say. Plain text, well-formed UTF-8.
    virtual void tell(const std::string& text, bool isError) = 0;

    /// Asks what a module wants to know; `echo` is false for a password. None when the person
    /// cancels, which ends the conversation.
    virtual std::optional<SecretText> ask(const std::string& prompt, bool echo) = 0;
};

/// One PAM service for one account.
class PamStack {
public:
    /// A stack of the system: the service's own file where it is installed, otherwise "other".
    PamStack(std::string service, std::string user)
        : service_(std::move(service)), user_(std::move(user)) {}
    virtual ~PamStack() = default;
    PamStack(const PamStack&) = delete;
    PamStack& operator=(const PamStack&) = delete;

    /// Why the stack cannot be started at all, in PAM's words. Asks nobody anything.
    std::optional<std::string> unavailableReason() const;

    /// Runs authentication and then the account check, in the calling thread, for as long as the
    /// modules take. True only when both succeed, for this account and no other; an empty password
    /// never counts.
    bool prove(PamConversation& person) const;

protected:
    /// Opens a transaction, as pam_start does.
    virtual int start(const std::string& service, const std::string& user,
                      const pam_conv& conversation, pam_handle** handle) const;

private:
    std::string service_;
    std::string user_;
};

} // namespace kelvo
