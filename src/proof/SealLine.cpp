#include "proof/SealLine.h"

#include "base/Json.h"
#include "base/Text.h"
#include "base/Uuid.h"

#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

struct Members {
    Json line = Json::object();

    void text(const char* key, const std::string& value) { line[key] = toValidUtf8(value); }

    void approval(const std::string& account, std::int64_t run, const Approval& given) {
        line["run"] = run;
        text("account", account);
        text("approved", given.sentence);
        text("asked", given.asked);
        text("answered", given.answered);
    }

    void operator()(const BeginLine& fact) {
        line["kind"] = "begin";
        text("log", fact.log);
        text("organisation", fact.organisation);
        text("computer", fact.computer);
    }

    void operator()(const RunLine& fact) {
        line["kind"] = "run";
        line["run"] = fact.run;
        text("account", fact.account);
        text("program", fact.program);
        text("graph", fact.graph);
        text("roles", fact.roles);
    }

    void operator()(const DecisionLine& fact) {
        line["kind"] = fact.adopted ? "adopt" : "seal";
        approval(fact.account, fact.run, fact.approval);
        text("file", fact.file);
        text("record", fact.record);
        text("block", fact.block);
        line["payload"] = fact.payload;
        text("evidence", fact.evidence);
    }

    void operator()(const SupplyLine& fact) {
        line["kind"] = "supply";
        approval(fact.account, fact.run, fact.approval);
        text("root", fact.root);
        text("name", fact.name);
    }

    void operator()(const PackageLine& fact) {
        line["kind"] = "package";
        text("name", fact.name);
        text("tagmanifest", fact.tagmanifest);
    }
};

} // namespace

std::optional<std::string> sealLineText(const SealLine& line) {
    Members members;
    std::visit(members, line.fact);
    members.line["v"] = 1;
    members.line["seq"] = line.seq;
    members.line["prev"] = line.prev;
    members.line["ts"] = line.ts;
    auto text = writeJson(members.line);
    if (!text || text->size() >= longestSealLine) return std::nullopt;
    *text += '\n';
    return text;
}

std::string newLogId() {
    while (true) {
        std::string id = randomUuid();
        if (isLogId(id)) return id;
    }
}

bool isLogId(std::string_view text) {
    const auto lower = [](char c) { return c >= 'a' && c <= 'f'; };
    // E is left out: 12345E67 reads as a number, too.
    return isUuid(text) && std::none_of(text.begin(), text.end(), lower) && text[14] == '4' &&
           text.substr(0, 8).find_first_of("ABCDF") != std::string_view::npos;
}

} // namespace kelvo
