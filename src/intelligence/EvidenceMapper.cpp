#include "intelligence/EvidenceMapper.h"

#include "base/Text.h"
#include "intelligence/ModelSession.h"

#include <utility>

namespace kelvo::EvidenceMapper {

void mapEvidence(LanguageModel& model, std::string_view text,
                 const std::vector<std::string>& criterionIDs,
                 std::function<void(std::optional<EvidenceMapping>)> done) {
    if (!modelAvailable(model)) return done(std::nullopt);
    const std::string ids = joined(criterionIDs, ", ");
    generate<EvidenceMapping>(
        model,
        "You are given the text of a compliance document and a list of SOC 2 criterion ids.\n"
        "Return ONLY the ids this document provides evidence for, and a one-sentence summary.\n"
        "Do not invent ids; choose only from the provided list: " +
            ids + ".",
        "Allowed criterion ids: " + ids + "\n\nDocument text:\n" +
            std::string(firstCharacters(text, charactersSent)),
        [done = std::move(done)](tl::expected<EvidenceMapping, ModelFailure> mapping) {
            if (!mapping) return done(std::nullopt);
            done(std::move(*mapping));
        });
}

} // namespace kelvo::EvidenceMapper
