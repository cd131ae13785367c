#pragma once

#include "ledger/TotemChain.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace kelvo {

/// The document of a sealed record: every member of the payload (none where it is no JSON object),
/// "sourceDb" and "title" where it lacks them, and the totem's own members, which replace any of
/// the payload's.
Json recordDocument(const Totem& totem, std::string_view payload, const std::string& asOf);

/// "<sourceDb>-<index>-<first 12 characters of the block hash>.totem.json"; "collapse" stands for a
/// sourceDb that is no text.
std::string recordFileName(const Json& document, const Totem& totem);

/// Writes the record of `totem` into `directory`, atomically, and says what became of it: "→
/// outputs (bouncer will seal)", "outputs: encode-failed" or "outputs: " and the write error. The
/// directory is not created; a sourceDb that cannot be part of a file name is a write error.
std::string writeRecordFile(const std::filesystem::path& directory, const Totem& totem,
                            std::string_view payload, const std::string& asOf);

} // namespace kelvo
