#include "ledger/Log.h"

#include "base/Files.h"
#include "base/Time.h"

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
    (void)appendLine(file_, *line);
}

} // namespace kelvo
