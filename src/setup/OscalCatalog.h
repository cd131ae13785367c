#pragma once

#include "setup/OrganisationList.h"

#include <tl/expected.hpp>

#include <string_view>

namespace kelvo {

/// Reads a list from an OSCAL catalog in JSON (NIST, OSCAL 1.1 and later): every control of
/// `catalog`, those in groups and below other controls too, in the order of the file, but none
/// whose property `status` is "withdrawn". A control gives `id` and `title`; its property `label`
/// becomes the id of the criterion behind the row where it is one. The rest is as a row begins.
tl::expected<OrganisationList, ListFaults> readOscalCatalog(std::string_view bytes);

} // namespace kelvo
