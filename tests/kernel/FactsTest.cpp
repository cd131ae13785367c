// Graphs, their strokes and their values, in tests/data/kernel: "Se j1 R=2, 0>1 1<2!a" are the
// nodes with their parameters and the bonds with the way of their power and a stroke that is there.

#include "kernel/StateSpace.h"
#include "support/Story.h"

#include <array>
#include <cstdio>
#include <sstream>

namespace kelvo::test {
namespace {

BondGraph graph(const std::string& text) {
    BondGraph made;
    std::istringstream nodes(text.substr(0, text.find(',')));
    for (std::string word; nodes >> word;) {
        const auto is = word.find('=');
        Node node{.id = "n" + std::to_string(made.nodes.size()),
                  .kind = nodeKind(word.substr(0, is)).value()};
        if (is != std::string::npos) node.param = std::stod(word.substr(is + 1));
        if (isSource(node.kind)) node.id = "s";
        made.nodes.push_back(node);
    }
    std::istringstream bonds(text.substr(text.find(',') + 1));
    for (std::string word; bonds >> word;) {
        const auto way = word.find_first_of("<>");
        Bond bond{.a = std::stoll(word), .b = std::stoll(word.substr(way + 1))};
        bond.powerAToB = word[way] == '>';
        if (word.ends_with("!a")) bond.causality = Causality::aSetsEffort;
        if (word.ends_with("!b")) bond.causality = Causality::bSetsEffort;
        made.bonds.push_back(bond);
    }
    return made;
}

std::string row(const std::vector<double>& values) {
    std::string text;
    for (const double value : values) {
        std::array<char, 40> digits{};
        std::snprintf(digits.data(), digits.size(), "%.9g", value);
        text += (text.empty() ? "" : " ") + std::string(digits.data());
    }
    return text;
}

class KernelFacts : public Facts {
public:
    KernelFacts() {
        figures["kind"] = [](Rest text) -> std::string {
            const auto kind = nodeKind(text);
            if (!kind) return "unknown";
            EXPECT_EQ(rawValue(*kind), text);
            const auto count = ports(*kind);
            return (count ? std::to_string(*count) : "any") + (count == 1 ? " port" : " ports") +
                   (isSource(*kind)     ? " source"
                    : isStorage(*kind)  ? " storage"
                    : isJunction(*kind) ? " junction"
                                        : "");
        };
        figures["strokes"] = [](Rest text) {
            const auto causal = graph(text).assignCausality();
            if (!causal) return causal.error().description();
            EXPECT_EQ(causal->assignCausality(), causal) << "assigning again changes nothing";
            std::string strokes;
            for (const Bond& bond : causal->bonds) {
                const bool a = bond.causality == Causality::aSetsEffort;
                strokes += std::string(strokes.empty() ? "" : " ") + (a ? "a" : "b");
            }
            return strokes;
        };
        figures["values"] = [](Rest rest) {
            const auto at = rest.find(" at ");
            std::istringstream in(rest.substr(at + 4));
            const std::vector<double> state{std::istream_iterator<double>(in), {}};
            const auto space = StateSpace::create(graph(rest.substr(0, at))).value();
            const Eval eval = space.derivatives(state, {{"s", 3.0}});
            return "effort " + row(eval.effort) + "; flow " + row(eval.flow) + "; dx " +
                   row(eval.dx) + "; power " +
                   row({eval.sourcePower, eval.storedRate, eval.dissipated,
                        space.storedEnergy(state)});
        };
    }
};

const int told = tellScenes<KernelFacts>("Facts", KELVO_DATA "/kernel");

} // namespace
} // namespace kelvo::test
