#pragma once

#include "ledger/TotemChain.h"

#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// What a record file holds of the seal that made it.
struct RebuiltRecord {
    Totem totem;
    std::string payload; ///< the sealed bytes, byte for byte; "" where nothing was sealed
    std::string evidenceRoot;
    std::string evidenceSummary;
    std::string criterion;
};

/// The largest record file that is looked at, in bytes.
inline constexpr std::size_t largestRecord = std::size_t{4} << 20;

/// Rebuilds the sealed bytes of the record file `name`, that is the payload whose hash the record
/// holds. None where there is no such payload, or the record's block hash, name or time is not what
/// a seal would have written: then it can be listed nowhere.
std::optional<RebuiltRecord> rebuildRecord(std::string_view name, std::string_view bytes);

} // namespace kelvo
