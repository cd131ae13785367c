#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kelvo::device {

using Deadline = std::chrono::steady_clock::time_point;
using Environment = std::map<std::string, std::string>;

/// Runs the machine's read-only tools. A double answers for them in tests.
class Commands {
public:
    virtual ~Commands() = default;

    /// What the executable at the absolute `path` wrote to its standard output, whatever its exit
    /// status. None when it cannot be launched, has not ended at `deadline` or writes without end.
    virtual std::optional<std::string>
    run(const std::string& path, const std::vector<std::string>& arguments, Deadline deadline) = 0;
};

/// Real child processes: standard input and standard error lead nowhere, the environment holds
/// nothing but what is given here, and no descriptor of this process is handed down. A child that
/// does not end in time is killed together with all that it started in its process group, and so is
/// what a child leaves behind when it ends.
class ChildProcess : public Commands {
public:
    /// More output than any of these tools has, in bytes.
    static constexpr std::size_t maxOutput = std::size_t{4} << 20;

    explicit ChildProcess(const Environment& environment);
    ~ChildProcess() override;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    std::optional<std::string> run(const std::string& path,
                                   const std::vector<std::string>& arguments,
                                   Deadline deadline) override;

private:
    void reap(pid_t child, int childHandle);
    void reapStragglers();

    std::vector<std::string> environment_; ///< "NAME=value"
    /// Killed, but caught in the kernel (a dead network disk) when this object last looked.
    std::vector<pid_t> stragglers_;
};

} // namespace kelvo::device
