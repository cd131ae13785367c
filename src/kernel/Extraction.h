#pragma once

#include "kernel/Model.h"

#include <tl/expected.hpp>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kelvo {

/// Why an extracted graph is no bond graph. Which payload fields count depends on `fault`; the
/// others stay empty, so that equality is that of fault and payload.
struct ExtractionError {
    enum class Fault { unknownKind, duplicateID, danglingBond, missingParam, empty };

    static ExtractionError unknownKind(std::string kind);
    static ExtractionError duplicateID(std::string id);
    static ExtractionError danglingBond(std::string id);
    static ExtractionError missingParam(std::string id, std::string kind);
    static ExtractionError empty();

    /// The text shown to a person.
    std::string description() const;

    bool operator==(const ExtractionError&) const = default;

    Fault fault{};
    std::string id{};   ///< duplicateID, danglingBond, missingParam
    std::string kind{}; ///< unknownKind, missingParam
};

/// What keeps an extracted graph out: its own form, or the structure of the graph it describes.
using GraphRejection = std::variant<ExtractionError, GraphError>;

/// The text shown to a person.
std::string description(const GraphRejection& rejection);

/// A graph as templates and language models write it: elements named by id, kinds by text.
struct ExtractedGraph {
    struct N {
        std::string id;
        std::string kind; ///< expected to be the raw value of a NodeKind
        std::optional<double> param{};

        bool operator==(const N&) const = default;
    };
    struct B {
        std::string from; ///< node id, becomes the bond's end a
        std::string to;   ///< node id, becomes the bond's end b

        bool operator==(const B&) const = default;
    };

    std::vector<N> nodes;
    std::vector<B> bonds;

    /// The only gate from outside to a BondGraph: unique ids, known kinds, parameters where R, C,
    /// I, TF and GY need them, known bond ends, then `BondGraph::validateStructure`. The first
    /// fault is the error. The result keeps the order of nodes and bonds and has no causal strokes.
    tl::expected<BondGraph, GraphRejection> validated() const;

    bool operator==(const ExtractedGraph&) const = default;
};

} // namespace kelvo
