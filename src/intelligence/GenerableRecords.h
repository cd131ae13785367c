#pragma once

#include "intelligence/Generable.h"

namespace kelvo {

/// One proposed bond-graph element.
struct GeneratedNode {
    std::string id;
    std::string kind;
    std::optional<double> param;
};

/// One proposed power bond.
struct GeneratedBond {
    std::string from;
    std::string to;
};

/// A whole proposed graph.
struct GeneratedGraph {
    std::vector<GeneratedNode> nodes;
    std::vector<GeneratedBond> bonds;
};

/// The answer to a free question, with an optional graph.
struct SOCReply {
    std::string answer;
    std::vector<GeneratedNode> nodes;
    std::vector<GeneratedBond> bonds;
};

/// Which criteria a document is evidence for.
struct EvidenceMapping {
    std::vector<std::string> criteria;
    std::string summary;

    bool operator==(const EvidenceMapping&) const = default;
};

/// The assistant's answer and the one step it proposes, as a token.
struct GeneratedAssistantReply {
    std::string answer;
    std::string action;
};

template <>
struct Generable<GeneratedNode> {
    static constexpr const char* name = "GeneratedNode";
    static constexpr auto fields = std::make_tuple(
        field("id", &GeneratedNode::id, "unique short id, e.g. R1, C2, mass"),
        field("kind", &GeneratedNode::kind, "one of Se Sf R C I TF GY j0 j1"),
        field("param", &GeneratedNode::param,
              "element value (resistance/capacitance/inertance/modulus); omit for sources & "
              "junctions"));
};

template <>
struct Generable<GeneratedBond> {
    static constexpr const char* name = "GeneratedBond";
    static constexpr auto fields =
        std::make_tuple(field("from", &GeneratedBond::from, "id of one endpoint element"),
                        field("to", &GeneratedBond::to, "id of the other endpoint element"));
};

template <>
struct Generable<GeneratedGraph> {
    static constexpr const char* name = "GeneratedGraph";
    static constexpr auto fields = std::make_tuple(
        field("nodes", &GeneratedGraph::nodes,
              "Every physical element. kind ∈ {Se,Sf,R,C,I,TF,GY,j0,j1}. R/C/I/TF/GY need a "
              "numeric param; Se/Sf/j0/j1 omit it."),
        field("bonds", &GeneratedGraph::bonds,
              "Power bonds connecting element ids. Do NOT assign causality or direction of "
              "effort/flow."));
};

template <>
struct Generable<SOCReply> {
    static constexpr const char* name = "SOCReply";
    static constexpr auto fields = std::make_tuple(
        field("answer", &SOCReply::answer,
              "A short, plain-language answer for the SOC2 operator (2-4 sentences). Always "
              "present."),
        field("nodes", &SOCReply::nodes,
              "If the user described a physical or control system to model, its bond-graph "
              "elements; otherwise an empty list."),
        field("bonds", &SOCReply::bonds,
              "Bonds between those elements; empty if no system was described."));
};

template <>
struct Generable<EvidenceMapping> {
    static constexpr const char* name = "EvidenceMapping";
    static constexpr auto fields = std::make_tuple(
        field("criteria", &EvidenceMapping::criteria,
              "The SOC 2 criterion ids — chosen ONLY from the provided list — that this document "
              "provides evidence for. Do not invent ids."),
        field("summary", &EvidenceMapping::summary,
              "One-sentence plain-English summary of what the document is and which controls it "
              "evidences."));
};

template <>
struct Generable<GeneratedAssistantReply> {
    static constexpr const char* name = "GeneratedAssistantReply";
    static constexpr auto fields = std::make_tuple(
        field("answer", &GeneratedAssistantReply::answer,
              "plain-English answer for a non-technical user; NO jargon like "
              "bondgraph/totem/dissipation/causality"),
        field("action", &GeneratedAssistantReply::action,
              "exactly one of: none, play, pause, add_evidence, snapshot_os, readiness, or "
              "generate:<criterionId> where <criterionId> is a real criterion id from the "
              "context"));
};

} // namespace kelvo
