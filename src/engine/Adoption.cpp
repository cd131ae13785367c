#include "engine/EngineVM.h"

namespace kelvo {

void EngineVM::adoptNow(const Turn&, const SOC2Template& family) {
    std::set<std::string> chosen = *adopted;
    chosen.insert(family.id);
    adopted.set(std::move(chosen));
    // The table's order decides the composition, whatever the order of adoption was.
    std::vector<std::string> families;
    for (const SOC2Template& each : templates()) {
        if (adopted->contains(each.id)) families.push_back(each.id);
    }
    const std::string count = std::to_string(adopted->size()) + " families";
    const auto graph = SOC2Templates::compose(families).validated();
    if (!graph) return status.set("REJECTED: " + description(graph.error()));
    if (!install(*graph, "System: " + count + ", growing")) return;

    currentTemplate.set(family.id);
    const std::size_t states = space_->states().size();
    const std::string extent = count + ", " + std::to_string(states) + " states";
    status.set("System: " + extent + " (latest +" + family.id + " ×" +
               std::to_string(family.controls) + "). Play to charge, then Bond to checkpoint.");
    cite("Adopted " + family.id + " into system: " + family.title, "compose · " + extent);
    log_.e("adopt_compose", {{"cc", family.id},
                             {"controls", family.controls},
                             {"families", adopted->size()},
                             {"states", states}});
}

} // namespace kelvo
