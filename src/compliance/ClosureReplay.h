#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>

namespace kelvo {

using CriterionIds = std::set<std::string, std::less<>>;

/// The criteria that the sealed records in `directory` close: every "*.totem.json" directly inside
/// it that is a JSON object with "sourceDb" = "control", "gate_after" = 1, a non-empty
/// "evidence_root" and a "criterion" of `criterionIds`. Whatever else carries such a name is passed
/// over without a word: other records, broken files, folders, FIFOs, dangling links, files larger
/// than `largestRecordFile`. Reading ends once every criterion is closed.
CriterionIds sealedClosures(const std::filesystem::path& directory,
                            const CriterionIds& criterionIds);

/// Bytes. A record holds one decision; the longest text in it is a criterion's evidence.
inline constexpr std::size_t largestRecordFile = std::size_t{4} << 20;

} // namespace kelvo
