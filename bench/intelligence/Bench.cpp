// Mapping a document of the greatest length that is sent, by the built-in responder, and building
// the prompt for it, each against the least that such work must do.

#include "base/Text.h"
#include "compliance/SOC2Templates.h"
#include "intelligence/EvidenceMapper.h"
#include "responder/BuiltInResponder.h"
#include "support/Fakes.h"

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "Table.h"

namespace kelvo::bench {
namespace {

const std::array<const char*, 13> criteria = {
    "CC1-ethics", "CC2-communication", "CC3-risk",        "CC4-monitoring", "CC5-policy",
    "CC6-access", "CC6-device",        "CC6-encryption",  "CC7-logs",       "CC7-incident",
    "CC8-change", "CC9-continuity",    "CC9-vendor-risk",
};

std::vector<std::string> ids() {
    return {criteria.begin(), criteria.end()};
}

GroundTexts ground() {
    GroundTexts texts;
    for (const char* id : criteria)
        texts.criteria.push_back(
            {id, "Some of it is in place and written down. GAP: no yearly review"});
    for (const SOC2Template& family : SOC2Templates::all()) {
        texts.families.push_back(
            {family.id, family.title, family.criterionText, family.policy, family.evidence});
    }
    return texts;
}

/// A policy of 6,000 characters.
std::string document() {
    const std::string paragraph =
        "Access to production is granted on the principle of least privilege and only after the "
        "system owner approves the request. Multi-factor authentication is enforced for every "
        "application, and access rights are reviewed each quarter. Backups are encrypted at rest, "
        "and a restore test is made twice a year. ";
    std::string text = "Security Policy\n\n";
    while (text.size() < EvidenceMapper::charactersSent)
        text += paragraph;
    text.resize(EvidenceMapper::charactersSent);
    return text;
}

ModelRequest mappingRequest() {
    test::FakeModel model;
    EvidenceMapper::mapEvidence(model, document(), ids(), [](const auto&) {});
    return model.requests.front();
}

void mapDocument(benchmark::State& state) {
    const GroundTexts texts = ground();
    const BuiltInResponder responder([&] { return texts; });
    const ModelRequest request = mappingRequest();
    for (auto _ : state)
        benchmark::DoNotOptimize(responder.respond(request));
}

void stemDocument(benchmark::State& state) {
    const Stems stems;
    const std::string text = document();
    for (auto _ : state)
        benchmark::DoNotOptimize(stems(text));
}

void buildPrompt(benchmark::State& state) {
    const std::string text = document();
    const std::vector<std::string> allowed = ids();
    test::FakeModel model;
    for (auto _ : state) {
        EvidenceMapper::mapEvidence(model, text, allowed, [](const auto&) {});
        model.fail("");
        model.requests.clear();
    }
}

void countCharacters(benchmark::State& state) {
    const std::string text = document();
    for (auto _ : state)
        benchmark::DoNotOptimize(characterCount(text));
}

void addAll() {
    benchmark::RegisterBenchmark("map", mapDocument);
    benchmark::RegisterBenchmark("stem", stemDocument);
    benchmark::RegisterBenchmark("prompt", buildPrompt);
    benchmark::RegisterBenchmark("count", countCharacters);
}

void print(const Collector& results) {
    const double map = results.fastest("map");
    const double prompt = results.fastest("prompt");
    std::printf("Mapping 6,000 characters to 13 criteria, built in: %s, %.2f times stemming them\n",
                duration(map).c_str(), map / results.fastest("stem"));
    std::printf("Building the prompt for them: %s, %.2f times counting their characters\n",
                duration(prompt).c_str(), prompt / results.fastest("count"));
}

} // namespace
} // namespace kelvo::bench

int main(int argc, char** argv) {
    using namespace kelvo::bench;
    return measure(argc, argv, addAll, print);
}
