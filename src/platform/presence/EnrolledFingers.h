#pragma once

#include <QString>
#include <string>

namespace kelvo {

/// Whether fprintd (net.reactivated.Fprint on the system bus) knows a finger of an account.
class EnrolledFingers {
public:
    virtual ~EnrolledFingers() = default;

    /// Waits at most two seconds for the service; false when it does not answer, when there is no
    /// reader and when no finger is enrolled.
    bool any(const std::string& user) const;

protected:
    /// The system bus at its fixed path: a variable of the environment could name another.
    virtual QString busAddress() const;
};

} // namespace kelvo
