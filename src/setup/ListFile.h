#pragma once

#include "setup/OrganisationList.h"

#include <tl/expected.hpp>

#include <filesystem>

namespace kelvo {

enum class ListKind { csv, catalog };

/// Reads a list from a file: at most 4 MiB of CSV, at most 64 MiB of an OSCAL catalog. A file that
/// cannot be read is a fault like any other.
tl::expected<OrganisationList, ListFaults> readListFile(const std::filesystem::path& file,
                                                        ListKind kind);

} // namespace kelvo
