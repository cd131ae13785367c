#pragma once

#include "base/Json.h"
#include "ports/Clock.h"

#include <filesystem>
#include <string_view>

namespace kelvo {

/// The event log: one compact JSON object a line, keys sorted, appended to one local file. It never
/// reports a failure: an event that JSON cannot hold, a missing directory or an unwritable file
/// leave no trace and disturb nobody. A log that exists is never replaced, rotated or read back.
class Log {
public:
    /// `file` is created by the first event; its directory never is.
    Log(std::filesystem::path file, const Clock& clock);

    /// Appends one event. "kind" and "ts" (the time of the call) replace fields of those names. A
    /// line is one write to the end of the file, so that lines of several processes never mix; one
    /// that the disk cannot take whole is taken back.
    void e(std::string_view kind, Json fields = Json::object()) const;

    const std::filesystem::path& path() const { return file_; }

private:
    std::filesystem::path file_;
    const Clock& clock_;
};

} // namespace kelvo
