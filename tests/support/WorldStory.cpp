#include "support/WorldStory.h"

#include "base/Files.h"
#include "base/Sha256.h"
#include "base/Text.h"
#include "graphjson/GraphJson.h"

#include <array>
#include <cstdlib>
#include <set>
#include <sstream>
#include <stdexcept>

namespace kelvo::test {
namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

std::string figure(double value) {
    return writeJson(value).value_or("no number");
}

std::string yes(bool value) {
    return value ? "yes" : "no";
}

std::string orNone(const std::optional<std::string>& text) {
    return text.value_or("none");
}

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

/// ["criterion", "task", "way to close"]
RoleMap::Control control(const std::string& json) {
    const Json row = Json::parse(json);
    return {row.at(0), row.at(1), row.at(2)};
}

std::string shown(const RoleMap::Control& control) {
    return control.criterion + ": " + control.task + " (" + control.close + ")";
}

std::string shown(const std::optional<Act>& act) {
    return act ? actionName(*act) : "no action";
}

std::string shown(const NBA& card) {
    return card.title + " | " + card.detail + " | " + shown(card.action);
}

Act act(const std::string& text) {
    const auto words = wordsOf(text);
    for (int kind = 0; kind <= static_cast<int>(Act::Kind::snapshot); ++kind) {
        const Act each{static_cast<Act::Kind>(kind), words.size() > 1 ? words[1] : ""};
        constexpr const char* names[] = {"closeGap", "generate", "play", "pause",
                                         "throttle", "bond",     "kyc",  "snapshot"};
        if (words.at(0) == names[kind]) return each;
    }
    throw std::runtime_error("no such action: " + text);
}

} // namespace

WorldStory::WorldStory() {
    tellOfTheWorld();
    tellOfTheEngine();
    lookAtTheEngine();
    lookAtTheWorld();
}

std::vector<std::string> WorldStory::happened() {
    std::vector<std::string> lines = world.transcript();
    if (!world.started()) return lines;
    for (const Totem& block : world->chain().blocks()) {
        const std::string mark = "#" + std::to_string(block.index);
        for (std::string& line : lines) {
            line = replaced(replaced(line, block.blockHash, mark), block.blockHash.substr(0, 12),
                            mark + "..");
        }
    }
    return lines;
}

/// "outputs/x", "proof/x" and "project/x" below the directories, any other name in the world's own
/// folder. A name that ends in "*" is the first that begins so.
std::filesystem::path WorldStory::path(const std::string& name) const {
    namespace fs = std::filesystem;
    const auto below = [&name](const fs::path& folder, std::size_t length) {
        return folder / name.substr(std::min(length, name.size()));
    };
    fs::path whole = world.root() / name;
    if (name.starts_with("outputs")) whole = below(world.outputs(), 8);
    if (name.starts_with("project")) whole = below(world.project(), 8);
    if (name.starts_with("proof")) whole = below(world.outputs().parent_path() / "proof", 6);
    if (!name.ends_with('*')) return whole;
    std::string beginning = whole.filename().string();
    beginning.pop_back();
    std::set<fs::path> found;
    for (const auto& entry : fs::directory_iterator(whole.parent_path())) {
        if (entry.path().filename().string().starts_with(beginning)) found.insert(entry.path());
    }
    if (found.empty()) throw std::runtime_error("there is no " + name);
    return *found.begin();
}

void WorldStory::tellOfTheWorld() {
    words["mesh"] = [this](Rest rows) {
        std::vector<World::Criterion> criteria;
        for (const Json& row : Json::parse(rows)) {
            World::Criterion each{row.at(0)};
            if (row.size() > 1) each.g = row[1];
            if (row.size() > 2) each.w = row[2];
            if (row.size() > 3) each.evidence = row[3];
            criteria.push_back(each);
        }
        world.writeMesh(criteria);
    };
    words["roles"] = [this](Rest rows) { world.writeRoles(Json::parse(rows)); };
    words["start"] = [this](Rest) { world.start(); };
    words["stop"] = [this](Rest) { world.stop(); };
    words["write"] = [this](Rest rest) {
        const auto space = std::min(rest.find(" is "), rest.size());
        world.write(path(rest.substr(0, space)), rest.substr(std::min(space + 4, rest.size())));
    };
    // "edit outputs/control-1*: before => after", as with a text editor.
    words["edit"] = [this](Rest rest) {
        const auto colon = rest.find(": ");
        const auto arrow = rest.find(" => ");
        const auto file = path(rest.substr(0, colon));
        const std::string before = rest.substr(colon + 2, arrow - colon - 2);
        std::string bytes = readFile(file).value();
        bytes.replace(bytes.find(before), before.size(), rest.substr(arrow + 4));
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        world.write(file, bytes);
    };
    words["stretch"] = [this](Rest rest) {
        std::filesystem::resize_file(path(wordsOf(rest)[0]), std::stoull(wordsOf(rest)[1]));
    };
    words["folder"] = [this](Rest name) { std::filesystem::create_directories(path(name)); };
    words["remove"] = [this](Rest name) { std::filesystem::remove_all(path(name)); };
    words["choose"] = [this](Rest name) {
        world.filePanel.choice.reset();
        if (name != "nothing") world.filePanel.choice = path(name);
    };
    words["presence"] = [this](Rest answer) {
        world.authentication.unavailable.reset();
        world.authentication.answer = answer == "given";
        if (answer.starts_with("unavailable"))
            world.authentication.unavailable = trimmed(answer.substr(11));
    };
    words["biometry"] = [this](Rest kind) {
        world.authentication.kind = kind == "face"   ? Biometry::face
                                    : kind == "none" ? Biometry::none
                                                     : Biometry::fingerprint;
    };
    words["account"] = [this](Rest name) { world.account.name = name; };
    words["machine"] = [this](Rest rest) {
        const auto at = rest.find(" says ");
        if (rest == "secure") return world.processes.secure();
        if (rest == "silent") return world.processes.outputs.clear();
        world.processes.outputs[rest.substr(0, at)] = rest.substr(at + 6);
    };
    words["pdf"] = [this](Rest text) { world.pdfText.answer = text; };
    words["model"] = [this](Rest rest) {
        world.model.unavailable.reset();
        if (rest.starts_with("version")) world.model.version = std::stoi(rest.substr(8));
        if (rest.starts_with("unavailable")) world.model.unavailable = trimmed(rest.substr(11));
    };
    words["answer"] = [this](Rest text) { world.model.answer(text); };
    words["answerNewest"] = [this](Rest text) { world.model.answer(text, world.model.open() - 1); };
    words["fail"] = [this](Rest why) { world.model.fail(why); };
    words["drain"] = [this](Rest) { world.eventLoop.drain(); };
    words["fire"] = [this](Rest count) { fired_ = world.ticker.fire(std::stoi(count)); };
    words["clock"] = [this](Rest) { world.clock.step = std::chrono::seconds(1); };
    words["hours"] = [this](Rest count) {
        world.clock.moment += std::chrono::hours(std::stoi(count));
    };
    // What happens while the person is being asked, once.
    words["during"] = [this](Rest line) {
        during_.push_back(line);
        const auto happen = [this] {
            for (const std::string& each : std::exchange(during_, {}))
                act(each);
        };
        world.authentication.whileAsking = happen;
        world.filePanel.whileAsking = happen;
        world.eventLoop.duringPass = happen;
    };
}

void WorldStory::tellOfTheEngine() {
    words["begin"] = [this](Rest) {
        world->beginProof();
        world.eventLoop.drain();
    };
    // "period 2026-01-01 2026-12-31"; one day alone is Type I
    words["period"] = [this](Rest rest) {
        const auto days = wordsOf(rest);
        world->setPeriod({days.size() > 1,
                          parseIsoDay(days[0]).value(),
                          parseIsoDay(days.back()).value(),
                          {"Security"},
                          "Example CPA LLP"});
    };
    // "dates TEXT of the evidence: 2026-01-01 2026-01-31", each item behind a semicolon
    words["dates"] = [this](Rest rest) {
        std::vector<EvidenceItem> items;
        std::istringstream all(rest);
        for (std::string each; std::getline(all, each, ';');) {
            const auto part = wordsOf(each);
            EvidenceItem& item = items.emplace_back();
            item.root = sha256Hex(part.at(0));
            item.name = part.at(0);
            item.coversFrom = part.at(1);
            item.coversTo = part.at(2);
        }
        world->recordEvidenceDates(items);
    };
    // "note withdrawal A 1 why": about the record of block 1, or "-"
    words["note"] = [this](Rest rest) {
        const auto part = wordsOf(rest);
        Note note;
        for (const auto kind : {Note::Kind::withdrawal, Note::Kind::review}) {
            if (nameOf(kind) == part.at(0)) note.kind = kind;
        }
        note.criterion = part.at(1);
        if (part.at(2) != "-") note.about = world->chain().blocks()[std::stoul(part[2])].blockHash;
        note.text = part.at(3);
        world->recordNote(note);
    };
    words["document"] = [this](Rest kind) {
        world->recordDocument(static_cast<ReportDocument::Kind>(std::stoi(kind)));
    };
    words["handOver"] = [this](Rest folder) {
        std::filesystem::create_directories(path(folder));
        world->handOver("Jane Doe, Example CPA LLP", path(folder), false);
        world.eventLoop.drain();
    };
    words["owner"] = [this](Rest) { world->verifyKYC("Owner"); };
    words["verify"] = [this](Rest role) { world->verifyKYC(role); };
    words["play"] = [this](Rest) { world->play(); };
    words["pause"] = [this](Rest) { world->pause(); };
    words["throttle"] = [this](Rest) { world->throttle(); };
    words["bond"] = [this](Rest) { world->bondCollapse(); };
    words["closeGap"] = [this](Rest id) { world->closeGap(id); };
    words["close"] = [this](Rest json) { world->closeRoleControl(control(json)); };
    words["attest"] = [this](Rest json) { world->attestRoleControl(control(json)); };
    words["secure"] = [this](Rest json) { world->closeRoleControlViaOS(control(json)); };
    words["snapshot"] = [this](Rest) { world->snapshotOS(); };
    words["addEvidence"] = [this](Rest) { world->addEvidence(); };
    words["confirm"] = [this](Rest ids) { world->confirmEvidence(wordsOf(ids)); };
    words["generate"] = [this](Rest id) { world->generatePolicy(id); };
    words["approve"] = [this](Rest) { world->approveGenerated(); };
    words["discard"] = [this](Rest) { world->discardGenerated(); };
    words["ask"] = [this](Rest question) { world->askAssistant(question); };
    words["runProposed"] = [this](Rest) { world->runProposed(); };
    words["cancel"] = [this](Rest) { world->cancelModelWork(); };
    words["say"] = [this](Rest text) { world->siriSay(text); };
    words["run"] = [this](Rest text) { world->run(test::act(text)); };
    words["adopt"] = [this](Rest id) {
        for (const SOC2Template& family : world->templates()) {
            if (family.id == id || id == "all") world->adopt(family);
        }
    };
    words["load"] = [this](Rest json) {
        world->load(readExtractedGraph(Json::parse(json)).value());
    };
    words["built"] = [this](Rest json) {
        world->siriBuilt(readBondGraph(Json::parse(json)).value(), "a heater");
    };
}

void WorldStory::lookAtTheEngine() {
    figures["status"] = [this](Rest) { return *world->status; };
    figures["equations"] = [this](Rest) { return *world->equations; };
    figures["stateLine"] = [this](Rest) { return *world->stateLine; };
    figures["running"] = [this](Rest) { return yes(*world->running); };
    figures["latched"] = [this](Rest) { return yes(world->riskLatched()); };
    figures["t"] = [this](Rest) { return fixed(*world->t, 3); };
    figures["rate"] = [this](Rest) { return figure(*world->rate); };
    figures["drive"] = [this](Rest) { return figure(*world->drive); };
    figures["source"] = [this](Rest) { return world->seID(); };
    figures["nodes"] = [this](Rest) {
        std::vector<std::string> ids;
        for (const Node& node : world->space()->graph().nodes)
            ids.push_back(node.id);
        return joined(ids, " ");
    };
    figures["totems"] = [this](Rest) {
        std::vector<std::string> titles;
        for (const Totem& each : *world->totems)
            titles.push_back(each.title);
        return std::to_string(titles.size()) + (world->chain().verify() ? "" : " BROKEN") +
               (titles.empty() ? "" : ": " + joined(titles, " | "));
    };
    figures["staged"] = [this](Rest) {
        return *world->pending ? (*world->pending)->title + " " + (*world->pending)->payload
                               : "none";
    };
    figures["agent"] = [this](Rest) { return shown(*world->agentNBA); };
    figures["human"] = [this](Rest) { return shown(*world->humanNBA); };
    figures["reply"] = [this](Rest) { return *world->reply; };
    figures["busy"] = [this](Rest) { return yes(*world->assistantBusy); };
    figures["proposed"] = [this](Rest) { return orNone(world->proposedActionName()); };
    figures["action"] = [this](Rest) { return shown(*world->proposedAction); };
    figures["principal"] = [this](Rest) { return orNone(*world->principal); };
    figures["role"] = [this](Rest) { return orNone(*world->role); };
    figures["roles"] = [this](Rest) { return joined(world->availableRoles(), ", "); };
    figures["tasks"] = [this](Rest) {
        std::vector<std::string> tasks;
        for (const RoleMap::Control& each : world->roleControls())
            tasks.push_back(each.criterion + (world->isRoleControlClosed(each) ? " closed" : ""));
        return joined(tasks, ", ");
    };
    figures["next"] = [this](Rest) {
        const auto next = world->nextRoleControl();
        return next ? shown(*next) : "none";
    };
    figures["roleReadiness"] = [this](Rest) { return figure(world->roleReadiness()); };
    figures["readonly"] = [this](Rest) { return yes(world->roleReadonly()); };
    figures["package"] = [this](Rest) -> std::string {
        const auto& state = *world->package;
        if (!state) return "none";
        constexpr std::array names = {"reading", "refused", "writing", "written", "failed"};
        return names[static_cast<std::size_t>(state->stage)] +
               (state->reasons.empty() ? "" : ": " + joined(state->reasons, " "));
    };
    // What the package's own recipe says, and what the summary counts.
    figures["checked"] = [this](Rest) {
        const std::string folder = (*world->package)->folder;
        const std::string check = "cd '" + folder + "' && sh check.sh >&2";
        const Json summary = Json::parse(readFile(folder + "/data/summary.json").value());
        return yes(std::system(check.c_str()) == 0) + ", " +
               std::to_string(summary.at("logs").at(0).at("lines").get<int>()) + " lines, " +
               std::to_string(summary.at("decisions").get<int>()) + " decisions";
    };
    figures["standing"] = [this](Rest id) {
        const ProofStanding& all = (*world->proof)->standing;
        return std::string(nameOf(all.of(id)->standing)) + ", supported " + percent(all.supported) +
               (all.set ? "" : ", no period");
    };
    figures["readiness"] = [this](Rest) { return figure(*world->readiness); };
    figures["met"] = [this](Rest) { return std::to_string(world->metCount()); };
    figures["gate"] = [this](Rest id) { return figure((*world->mesh)->find(id)->g); };
    figures["adopted"] = [this](Rest) {
        return joined({world->adopted->begin(), world->adopted->end()}, " ") + " (" +
               orNone(*world->currentTemplate) + ")";
    };
    figures["proposal"] = [this](Rest) -> std::string {
        const auto& proposal = *world->evidenceProposal;
        if (!proposal) return "none";
        return proposal->name + " " + proposal->root.substr(0, 12) + " [" +
               joined(proposal->criteria, " ") + "] " + proposal->summary;
    };
    figures["draft"] = [this](Rest) {
        return *world->generatedDoc
                   ? (*world->generatedDoc)->criterion + ": " + (*world->generatedDoc)->text
                   : "none";
    };
    figures["facts"] = [this](Rest) {
        std::vector<std::string> facts;
        for (const OSFact& each : *world->osFacts)
            facts.push_back(each.value + (each.ok ? "" : "!"));
        return joined(facts, " ");
    };
    figures["claims"] = [this](Rest count) {
        std::vector<std::string> claims;
        for (const Citation& each : *world->citations)
            claims.push_back(each.claim + " (" + each.asOf + ")");
        if (!count.empty()) claims.resize(std::min(claims.size(), std::size_t{std::stoul(count)}));
        return joined(claims, " | ");
    };
    figures["chat"] = [this](Rest) {
        std::vector<std::string> lines;
        for (const ChatMsg& each : *world->chat)
            lines.push_back(each.role + ": " + each.text);
        return joined(lines, " | ");
    };
}

void WorldStory::lookAtTheWorld() {
    figures["exists"] = [this](Rest name) { return yes(std::filesystem::exists(path(name))); };
    figures["files"] = [this](Rest) {
        const auto names = world.files();
        return joined({names.begin(), names.end()}, " ");
    };
    figures["file"] = [this](Rest name) { return readFile(path(name)).value_or("no file"); };
    figures["there"] = [this](Rest name) { return yes(std::filesystem::exists(path(name))); };
    figures["prompt"] = [this](Rest) { return world.model.requests.back().prompt; };
    figures["requests"] = [this](Rest) { return std::to_string(world.model.requests.size()); };
    figures["open"] = [this](Rest) { return std::to_string(world.model.open()); };
    figures["fired"] = [this](Rest) { return std::to_string(fired_); };
    figures["starts"] = [this](Rest) { return std::to_string(world.ticker.starts); };
    figures["asked"] = [this](Rest) { return std::to_string(world.authentication.reasons.size()); };
    figures["panels"] = [this](Rest) { return std::to_string(world.filePanel.requests.size()); };
    figures["panel"] = [this](Rest) {
        const FilePanelRequest& request = world.filePanel.requests.back();
        return request.prompt + " | " + request.message + " | " +
               std::to_string(request.allowed.size()) + " kinds";
    };
    figures["notified"] = [this](Rest) {
        std::vector<std::string> posted;
        for (const Notification& each : world.notifications.posted)
            posted.push_back(each.title + " | " + each.body);
        return std::to_string(posted.size()) + ": " + joined(posted, " || ");
    };
    figures["lastEvent"] = [this](Rest) { return world.events().back().dump(); };
    figures["events"] = [this](Rest) { return joined(world.eventKinds(), " "); };
    figures["pdfBytes"] = [this](Rest) { return world.pdfText.lastBytes; };
}

} // namespace kelvo::test
