#include "LabelledSet.h"

#include "base/Json.h"
#include "compliance/SOC2Templates.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace kelvo::test {
namespace {

std::string contents(const std::string& name) {
    std::ifstream file(std::string(KELVO_LABELLED) + "/" + name);
    if (!file) throw std::runtime_error("no labelled file " + name);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

std::vector<LabelledDocument> labelledDocuments(const std::string& part) {
    std::vector<LabelledDocument> documents;
    std::istringstream lines(contents(part + ".txt"));
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("=== ")) {
            documents.back().text += line + "\n";
            continue;
        }
        LabelledDocument document;
        std::string bar;
        std::istringstream heading(line.substr(4));
        heading >> document.name >> bar;
        for (std::string id; heading >> id;)
            document.expected.push_back(id);
        documents.push_back(std::move(document));
    }
    return documents;
}

GroundTexts labelledGround() {
    return groundOf(contents("mesh.json"));
}

GroundTexts groundOf(const std::string& meshFile) {
    GroundTexts ground;
    const Json mesh = Json::parse(meshFile);
    for (const Json& node : mesh.at("nodes"))
        ground.criteria.push_back({node.at("id"), node.at("evidence")});
    for (const SOC2Template& family : SOC2Templates::all()) {
        ground.families.push_back(
            {family.id, family.title, family.criterionText, family.policy, family.evidence});
    }
    return ground;
}

} // namespace kelvo::test
