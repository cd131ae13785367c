#pragma once

#include "base/Files.h"
#include "setup/Answers.h"
#include "setup/OrganisationList.h"

#include <tl/expected.hpp>

#include <filesystem>
#include <string>

namespace kelvo {

/// The bytes of the two files by which an organisation begins (docs/file-formats.md).
struct OrganisationFiles {
    static constexpr const char* graphName = "soc2-mesh-bondgraph.json";
    static constexpr const char* rolesName = "roles-bondgraph.json";

    std::string graph; ///< readiness graph
    std::string roles; ///< role map
};

/// Makes both files from a settled list. A criterion's evidence text is its evidence, " GAP: " and
/// its gap; with neither "GAP: nothing recorded yet". An organisation without a name has none in
/// the graph. Refused is what the files' own reader would refuse: a role map of more than 1 MiB, a
/// name that is not UTF-8.
tl::expected<OrganisationFiles, ListFaults> composed(const OrganisationList& list,
                                                     const Answers& answers);

/// Writes both files into `folder`, which is made where it is not there, or neither: only where
/// there is no file of either name, each whole from the moment it has its name, on the disk when
/// this returns. On failure nothing is left behind.
tl::expected<void, FileError> writeOrganisation(const std::filesystem::path& folder,
                                                const OrganisationFiles& files);

} // namespace kelvo
