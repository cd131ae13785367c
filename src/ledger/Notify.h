#pragma once

#include "ports/Notifications.h"

#include <string>

namespace kelvo {

/// Calls the person back when the system needs them. Never reports a failure.
class Notify {
public:
    explicit Notify(Notifications& notifications) : notifications_(notifications) {}

    /// Asks once for leave to show alerts with sound.
    void requestAuth();

    /// Shows one notification now; where the process is no registered application or no service
    /// takes it, the line "[notify] title — body" goes to the console log.
    void fire(const std::string& title, const std::string& body);

private:
    Notifications& notifications_;
};

} // namespace kelvo
