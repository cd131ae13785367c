#pragma once

#include "setup/OrganisationList.h"

namespace kelvo {

/// Lists to begin with, each over all 33 common criteria of the Trust Services Criteria, which are
/// named by id only. Nothing is met in them.
enum class Starter {
    brief,   ///< thirteen criteria, ready in minutes
    detailed ///< twenty-seven, a line a task
};

OrganisationList starterList(Starter which);

} // namespace kelvo
