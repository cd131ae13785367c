#include "LabelledSet.h"

#include "base/Json.h"

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
    GroundTexts ground;
    const Json mesh = Json::parse(contents("mesh.json"));
    for (const Json& node : mesh.at("nodes"))
        ground.criteria.push_back({node.at("id"), node.at("evidence")});
    const Json families = Json::parse(contents("families.json"));
    for (const Json& family : families) {
        ground.families.push_back({family.at("id"), family.at("title"), family.at("criterion"),
                                   family.at("policy"), family.at("evidence")});
    }
    return ground;
}

} // namespace kelvo::test
