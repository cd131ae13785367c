#pragma once

#include "platform/device/Machine.h"
#include "ports/Processes.h"

#include <chrono>
#include <memory>

namespace kelvo::device {

/// Answers for the five posture tools, which this system does not have, in their own output form,
/// from what an unprivileged process can read. Nothing is ever changed, and nothing but these five
/// command lines is answered. What cannot be known is no output.
class DeviceProcesses : public Processes {
public:
    /// What a probe with all its tools may take; after that its fact is unknown.
    static constexpr std::chrono::milliseconds timeLimit{5000};

    /// Over this process's session and real tools.
    DeviceProcesses();

    /// Over any tree and tools. `commands` must outlive this object.
    DeviceProcesses(Session session, Commands& commands,
                    std::chrono::milliseconds limit = timeLimit);

    std::optional<std::string> run(const std::string& path,
                                   const std::vector<std::string>& arguments) override;

private:
    explicit DeviceProcesses(OwnSession own);

    Session session_;
    std::unique_ptr<ChildProcess> ownCommands_;
    Commands& commands_;
    std::chrono::milliseconds limit_;
};

} // namespace kelvo::device
