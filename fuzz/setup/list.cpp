// A list that is taken gives two files that their readers take: every criterion once, a role for
// each, and faults stand in the order of lines. The first byte chooses the form.

#include "compliance/RoleMap.h"
#include "compliance/SOC2Mesh.h"
#include "setup/CsvList.h"
#include "setup/OrganisationFiles.h"
#include "setup/OscalCatalog.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvo;
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const auto list = data[0] % 2 == 0 ? readCsvList(text) : readOscalCatalog(text);
    if (!list) {
        const ListFaults& faults = list.error();
        const auto byLine = [](const ListFault& a, const ListFault& b) { return a.line < b.line; };
        if (faults.empty() || !std::is_sorted(faults.begin(), faults.end(), byLine)) std::abort();
        for (const ListFault& fault : faults) {
            if (sentence(fault, "list").find_first_of("\n\r\x1b") != std::string::npos)
                std::abort();
        }
        return 0;
    }
    const auto files = composed(*list, {});
    if (!files) return 0;
    const auto mesh = SOC2Mesh::fromJson(*parseJson(files->graph));
    const auto roles = RoleMap::fromJson(*parseJson(files->roles));
    if (!mesh || !roles || mesh->nodes.size() != list->rows.size()) std::abort();
    std::set<std::string> ids;
    std::size_t tasks = 0;
    for (const SOC2Mesh::Node& node : mesh->nodes)
        ids.insert(node.id);
    for (const RoleMap::Role& role : roles->roles)
        tasks += role.readonly ? 0 : roles->controlsFor(role.role).size();
    if (ids.size() != mesh->nodes.size() || tasks != ids.size()) std::abort();
    return 0;
}
