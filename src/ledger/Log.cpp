#include "ledger/Log.h"

#include "base/Files.h"
#include "base/Time.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace kelvo {

Log::Log(std::filesystem::path file, const Clock& clock) : file_(std::move(file)), clock_(clock) {
}

void Log::e(std::string_view kind, Json fields) const {
    fields["kind"] = kind;
    fields["ts"] = iso8601(clock_.now());
    auto line = writeJson(fields);
    if (!line) return;
    *line += '\n';
    // A FIFO or a device in the log's place must not hold the program up.
    const int file = ::open(
        file_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (file < 0) return;
    struct stat status {};
    if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        // Not tried again: the rest of a line cut short by a full disk would not be one write.
        [[maybe_unused]] const auto written = ::write(file, line->data(), line->size());
    }
    ::close(file);
}

} // namespace kelvo
