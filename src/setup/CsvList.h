#pragma once

#include "setup/OrganisationList.h"

#include <tl/expected.hpp>

#include <string_view>

namespace kelvo {

/// Reads a list from CSV (docs/file-formats.md): UTF-8 with or without a byte order mark, separated
/// by commas or semicolons, the first line names the columns. Every fault is answered, with its
/// line.
tl::expected<OrganisationList, ListFaults> readCsvList(std::string_view bytes);

} // namespace kelvo
