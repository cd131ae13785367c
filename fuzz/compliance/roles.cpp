// Every role of a map that is read can be asked for its controls, and a name that is not there has
// none.

#include "compliance/RoleMap.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvo;
    const auto document = parseJson({reinterpret_cast<const char*>(data), size});
    if (!document) return 0;
    const auto map = RoleMap::fromJson(*document);
    if (!map) return 0;
    std::string other = "x";
    for (const std::string& name : map->roleNames()) {
        const RoleMap::Role* role = map->role(name);
        if (role == nullptr || role->name() != name) std::abort();
        const auto controls = map->controlsFor(name);
        const std::size_t expected = role->controls   ? role->controls->size()
                                     : role->criteria ? role->criteria->size()
                                                      : 0;
        if (controls.size() != expected) std::abort();
        other += name;
    }
    if (map->role(other) != nullptr || !map->controlsFor(other).empty()) std::abort();
    return 0;
}
