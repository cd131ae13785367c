// What files, tools and texts mean, in tests/data/compliance.

#include "base/Files.h"
#include "base/Text.h"
#include "compliance/ClosureReplay.h"
#include "compliance/OSSnapshot.h"
#include "compliance/RoleMap.h"
#include "compliance/SOC2Mesh.h"
#include "compliance/SOC2Templates.h"
#include "graphjson/GraphJson.h"
#include "support/SlowRecordReader.h"
#include "support/Story.h"
#include "support/TemporaryDirectory.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace kelvo::test {
namespace {

/// Answers by the command line's place among the five, and notes what it was asked.
class ScriptedTools : public Processes {
public:
    std::optional<std::string> run(const std::string& path,
                                   const std::vector<std::string>& arguments) override {
        asked.push_back(path + " " + joined(arguments, " "));
        if (asked.size() != place + 1) return std::nullopt;
        return output;
    }

    std::size_t place = 9;
    std::string output;
    std::vector<std::string> asked;
};

/// [[g, w], …]; "nan" and "-inf" for what JSON has no number for. Ids are the rows' numbers.
SOC2Mesh meshOf(const std::string& rows) {
    SOC2Mesh mesh;
    for (const Json& row : Json::parse(rows)) {
        const double g = row[0].is_string() ? std::atof(row[0].get<std::string>().c_str())
                                            : row[0].get<double>();
        mesh.nodes.push_back(
            {std::to_string(mesh.nodes.size()), g, row[1].get<std::int64_t>(), ""});
    }
    return mesh;
}

/// Loads a file of these bytes, or of so many, or no file at all.
template <class Loaded>
tl::expected<Loaded, std::string> loaded(const char* name, const std::string& text) {
    const TemporaryDirectory folder;
    const auto file = folder.path() / name;
    if (text == "folder") std::filesystem::create_directory(file);
    if (text.ends_with(" bytes")) {
        EXPECT_TRUE(writeFileAtomically(file, "{"));
        std::filesystem::resize_file(file, std::stoull(text));
    } else if (text != "folder" && text != "missing") {
        EXPECT_TRUE(writeFileAtomically(file, text));
    }
    return Loaded::load(file);
}

std::string mesh(const std::string& text) {
    const auto read = loaded<SOC2Mesh>("mesh.json", text);
    if (!read) return read.error();
    EXPECT_EQ(SOC2Mesh::fromJson(read->toJson())->nodes, read->nodes);
    return "accepted " + read->toJson().dump();
}

std::string roles(const std::string& text) {
    const auto map = loaded<RoleMap>("roles.json", text);
    if (!map) return map.error();
    EXPECT_EQ(map->role("no such role"), nullptr);
    EXPECT_TRUE(map->controlsFor("no such role").empty());
    std::vector<std::string> lines;
    for (const std::string& name : map->roleNames()) {
        std::vector<std::string> controls;
        for (const RoleMap::Control& each : map->controlsFor(name))
            controls.push_back(each.criterion + " " + each.task + " " + each.close);
        lines.push_back(name + (map->role(name)->readonly ? " (looks): " : ": ") +
                        joined(controls, ", "));
    }
    return joined(lines, "; ");
}

class ComplianceFacts : public Facts {
public:
    ComplianceFacts() {
        figures["closes"] = [](Rest text) { return closed(text); };
        figures["nested"] = [](Rest levels) {
            const std::size_t depth = std::stoul(levels);
            return closed(
                R"({"x":)" + std::string(depth, '[') + std::string(depth, ']') +
                R"(,"sourceDb":"control","gate_after":1,"evidence_root":"ab","criterion":"A"})");
        };
        figures["readiness"] = [](Rest rows) {
            const auto readiness = meshOf(rows).readiness();
            return writeJson(readiness.value).value_or("no number") + " of " +
                   std::to_string(readiness.sumW);
        };
        figures["gaps"] = [](Rest rows) {
            const SOC2Mesh mesh = meshOf(rows);
            std::vector<std::string> ids;
            for (const SOC2Mesh::Node& gap : mesh.gaps())
                ids.push_back(gap.id);
            const auto* highest = mesh.highestImpactGap();
            return (ids.empty() ? "none" : joined(ids, " ")) + ", highest " +
                   (highest == nullptr ? "none" : highest->id) + ", " +
                   std::to_string(mesh.metCount()) + " met";
        };
        figures["gapText"] = [](Rest text) { return SOC2Mesh::gapText({"id", 0, 1, text}); };
        figures["mesh"] = mesh;
        figures["meshFile"] = mesh;
        figures["meshOf"] = [](Rest sizes) {
            const auto space = sizes.find(' ');
            const SOC2Mesh large{{{std::string(std::stoul(sizes), 'i'), 0, 1,
                                   std::string(std::stoul(sizes.substr(space)), 'e')}}};
            return mesh(writeJson(large.toJson()).value());
        };
        figures["roles"] = roles;
        figures["rolesFile"] = roles;
        figures["facts"] = [](Rest) {
            ScriptedTools tools;
            std::vector<std::string> facts;
            for (const OSFact& each : OSSnapshot::read(tools))
                facts.push_back(each.key + (OSSnapshot::isRequired(each) ? "! " : " ") +
                                each.value);
            return joined(facts, ", ");
        };
        figures["asked"] = [](Rest) {
            ScriptedTools tools;
            OSSnapshot::read(tools);
            return joined(tools.asked, ", ");
        };
        figures["fact"] = [](Rest rest) {
            ScriptedTools tools;
            tools.place = std::stoul(rest);
            tools.output = rest.substr(2);
            const OSFact fact = OSSnapshot::read(tools).at(tools.place);
            return fact.value + (fact.ok ? ", good" : "");
        };
        figures["families"] = [](Rest) {
            std::vector<std::string> lines;
            for (const SOC2Template& each : SOC2Templates::all()) {
                lines.push_back(
                    joined({each.id, each.title, std::to_string(each.controls), each.criterionText,
                            each.policy, joined(each.evidence, "; "), toJson(each.graph).dump()},
                           "\n"));
            }
            return joined(lines, "\n\n");
        };
        figures["composed"] = [](Rest names) {
            std::istringstream in(names);
            const std::vector<std::string> families{std::istream_iterator<std::string>(in), {}};
            return toJson(SOC2Templates::compose(families)).dump();
        };
    }

private:
    /// As both readers have it.
    static std::string closed(const std::string& text) {
        ClosureReader reader;
        const auto criterion = reader.closedCriterion(text);
        EXPECT_EQ(criterion, support::closedBySlowReading(text)) << text.substr(0, 120);
        if (!criterion) return "none";
        return criterion->empty() ? "(an empty id)" : std::string(*criterion);
    }
};

const int told = tellScenes<ComplianceFacts>("Facts", KELVO_DATA "/compliance");

TEST(Families, AnySelectionIsAValidGraph) {
    for (unsigned chosen = 1; chosen < 512; ++chosen) {
        std::vector<std::string> families;
        for (unsigned bit = 0; bit < 9; ++bit) {
            if (chosen & (1U << bit)) families.push_back(SOC2Templates::all()[bit].id);
        }
        EXPECT_TRUE(SOC2Templates::compose(families).validated().has_value()) << chosen;
    }
}

} // namespace
} // namespace kelvo::test
