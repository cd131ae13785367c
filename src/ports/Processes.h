#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kelvo {

/// Runs the system's read-only tools.
class Processes {
public:
    virtual ~Processes() = default;

    /// Runs the executable at the absolute `path` and returns all that it wrote to its standard
    /// output, whatever its exit status; standard error is not read. None when it cannot be
    /// launched or does not end in bounded time.
    virtual std::optional<std::string> run(const std::string& path,
                                           const std::vector<std::string>& arguments) = 0;
};

} // namespace kelvo
