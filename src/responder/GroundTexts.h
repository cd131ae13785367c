#pragma once

#include <string>
#include <vector>

namespace kelvo {

/// What the built-in responder may draw on beside the prompt: texts that the organisation and the
/// control families bring, never anything it learnt elsewhere about the organisation.
struct GroundTexts {
    struct Criterion {
        std::string id;
        std::string evidence; ///< the readiness mesh's text, with or without a "GAP:" part
    };
    struct Family {
        std::string id; ///< "CC6"
        std::string title;
        std::string criterion;
        std::string policy;
        std::vector<std::string> evidence;
    };

    std::vector<Criterion> criteria;
    std::vector<Family> families;
};

} // namespace kelvo
