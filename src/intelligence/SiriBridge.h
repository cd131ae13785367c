#pragma once

#include "kernel/Extraction.h"
#include "ports/LanguageModel.h"

#include <functional>
#include <optional>
#include <string>
#include <variant>

namespace kelvo {

/// The model cannot be used; `reason` is the platform's.
struct SiriError {
    std::string reason;

    std::string description() const;
    bool operator==(const SiriError&) const = default;
};

/// Turns a spoken or typed description of a system into a bond graph for the kernel. The model
/// proposes structure and parameters only; causality and numbers are the kernel's.
namespace SiriBondGraph {

using Failure = std::variant<SiriError, ModelFailure, GraphRejection>;
std::string description(const Failure& failure);

struct Answer {
    std::string answer;
    std::optional<BondGraph> graph; ///< validated, causality not assigned
};

/// Answers a question, and builds a graph where the question describes a system. A malformed graph
/// is dropped and never hides the answer. Fails with SiriError or the model's failure. `done` is
/// called once; from inside this call only where the model is unavailable.
void ask(LanguageModel& model, const std::string& question,
         std::function<void(tl::expected<Answer, Failure>)> done);

/// Builds a causal graph from a description. Fails also where the proposed graph does.
void extract(LanguageModel& model, const std::string& text,
             std::function<void(tl::expected<BondGraph, Failure>)> done);

} // namespace SiriBondGraph
} // namespace kelvo
