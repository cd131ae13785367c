#include "responder/AssistantReplies.h"

#include "base/Json.h"
#include "base/Text.h"
#include "responder/CriterionRanking.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

namespace kelvo {
namespace {

struct Gap {
    std::string id;
    std::string needed;
};

struct State {
    std::string_view owner;     ///< empty when the context has none
    std::string_view readiness; ///< "42.3% (5/13 criteria met)"
    bool everythingMet = false;
    std::vector<Gap> gaps; ///< in the context's order, the most effective first
};

struct Reply {
    std::string answer;
    std::string action = "none";
};

constexpr std::size_t gapsListed = 5;
constexpr std::string_view notKnown = "I don't have that information.";

State readState(std::string_view context) {
    State state;
    bool inGaps = false;
    while (!context.empty()) {
        const auto end = context.find('\n');
        const std::string_view line = context.substr(0, end);
        context.remove_prefix(end == std::string_view::npos ? context.size() : end + 1);
        constexpr std::string_view owner = "Owner: ";
        constexpr std::string_view readiness = "Readiness: ";
        if (!inGaps && line.starts_with(owner)) state.owner = line.substr(owner.size());
        if (!inGaps && line.starts_with(readiness)) state.readiness = line.substr(readiness.size());
        if (line.starts_with("Open gaps: none")) state.everythingMet = true;
        const auto colon = line.find(": ");
        if (inGaps && line.starts_with("- ") && colon != std::string_view::npos)
            state.gaps.push_back(
                {std::string(line.substr(2, colon - 2)), std::string(line.substr(colon + 2))});
        if (line.starts_with("Open gaps (")) inGaps = true;
    }
    return state;
}

/// The words of a question, lower-cased, without punctuation around them.
std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    for (const char c : lowerCased(text) + " ") {
        const auto byte = static_cast<unsigned char>(c);
        const bool inside = byte >= 0x80 || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                            c == '\'' || c == '-' || c == '_' || c == '.';
        if (inside) {
            word += c;
        } else if (!word.empty()) {
            while (word.ends_with('.'))
                word.pop_back();
            if (!word.empty()) words.push_back(std::move(word));
            word.clear();
        }
    }
    return words;
}

using Words = std::span<const std::string_view>;

bool isOneOf(const std::string& word, Words list) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

bool hasAny(const std::vector<std::string>& words, Words list) {
    return std::any_of(words.begin(), words.end(),
                       [&](const std::string& word) { return isOneOf(word, list); });
}

constexpr std::array<std::string_view, 19> courtesies = {
    "please", "can", "could", "would", "you", "i",  "want", "to",   "i'd", "like",
    "let's",  "let", "us",    "now",   "hey", "ok", "just", "help", "me"};
constexpr std::array<std::string_view, 6> playVerbs = {"play",   "start", "run",
                                                       "resume", "begin", "launch"};
constexpr std::array<std::string_view, 5> pauseVerbs = {"pause", "stop", "freeze", "halt", "hold"};
constexpr std::array<std::string_view, 8> simulationWords = {
    "simulation", "model", "run", "it", "running", "play", "simulator", "sim"};
constexpr std::array<std::string_view, 7> addVerbs = {"add",    "upload", "attach", "submit",
                                                      "import", "map",    "provide"};
constexpr std::array<std::string_view, 7> evidenceWords = {"evidence", "document",  "file", "pdf",
                                                           "proof",    "documents", "files"};
constexpr std::array<std::string_view, 7> checkVerbs = {"check", "scan",   "inspect", "snapshot",
                                                        "test",  "verify", "read"};
constexpr std::array<std::string_view, 8> deviceWords = {
    "device", "computer", "laptop", "machine", "mac", "posture", "workstation", "os"};
constexpr std::array<std::string_view, 7> writeVerbs = {"generate", "draft",   "write",  "create",
                                                        "make",     "prepare", "produce"};
constexpr std::array<std::string_view, 9> decideVerbs = {
    "approve", "seal", "close", "delete", "remove", "sign", "mark", "record", "accept"};
constexpr std::array<std::string_view, 6> nextWords = {"next",     "first", "now",
                                                       "priority", "start", "begin"};
constexpr std::array<std::string_view, 10> gapWords = {
    "gap", "gaps", "missing", "open", "left", "remaining", "unmet", "todo", "outstanding", "lack"};
constexpr std::array<std::string_view, 12> readinessWords = {
    "readiness", "ready", "score",    "percent", "percentage", "progress",
    "status",    "far",   "standing", "met",     "compliant",  "audit"};
constexpr std::array<std::string_view, 5> ownerWords = {"owner", "accountable", "verified",
                                                        "responsible", "who"};

/// The gap whose id the question spells out.
const Gap* namedGap(const State& state, std::string_view question) {
    const std::string lowered = lowerCased(question);
    const Gap* found = nullptr;
    for (const Gap& gap : state.gaps) {
        const bool named = lowered.find(lowerCased(gap.id)) != std::string::npos;
        if (named && (found == nullptr || gap.id.size() > found->id.size())) found = &gap;
    }
    return found;
}

/// The gap that the question's words speak of more clearly than of any other.
const Gap* describedGap(const Stems& stems, const State& state, std::string_view question) {
    constexpr double leastScore = 2.0;
    constexpr double clearly = 1.5;
    GroundTexts ground;
    std::vector<std::string> ids;
    for (const Gap& gap : state.gaps) {
        ids.push_back(gap.id);
        ground.criteria.push_back({gap.id, gap.needed});
    }
    const auto matches = CriterionRanking(stems, ids, ground).rank(question);
    if (matches.empty() || matches.front().score < leastScore) return nullptr;
    if (matches.size() > 1 && matches[0].score < clearly * matches[1].score) return nullptr;
    const auto found = std::find_if(state.gaps.begin(), state.gaps.end(),
                                    [&](const Gap& gap) { return gap.id == matches.front().id; });
    return found == state.gaps.end() ? nullptr : &*found;
}

/// A criterion id as people write it, "cc6" or "cc6-access".
bool looksLikeCriterion(const std::string& word) {
    return word.size() >= 3 && word.starts_with("cc") && word[2] >= '1' && word[2] <= '9';
}

std::string ended(std::string text) {
    if (!text.ends_with('.') && !text.ends_with('!') && !text.ends_with('?')) text += '.';
    return text;
}

std::string need(const Gap& gap) {
    return gap.needed.empty() ? gap.id + " is open." : gap.id + " is open: " + ended(gap.needed);
}

Reply draftReply(const Stems& stems, const State& state, std::string_view question,
                 const std::vector<std::string>& words) {
    const Gap* gap = namedGap(state, question);
    const bool spelledOut = std::any_of(words.begin(), words.end(), looksLikeCriterion);
    if (gap == nullptr && spelledOut) {
        return {"That criterion is not among the open gaps that I was given, so I propose no "
                "draft."};
    }
    if (gap == nullptr) gap = describedGap(stems, state, question);
    if (gap == nullptr) {
        return {"I cannot tell which criterion the document is for. Please name it, as it stands "
                "in the list of open gaps."};
    }
    return {"I can draft a document for " + gap->id +
                " from what is on record for it. Please confirm with the button, then read it.",
            "generate:" + gap->id};
}

/// What the person asks to be done, when it is one of the known things.
std::optional<Reply> command(const Stems& stems, const State& state, std::string_view question,
                             const std::vector<std::string>& words) {
    const auto verb = std::find_if_not(words.begin(), words.end(), [](const std::string& word) {
        return isOneOf(word, courtesies);
    });
    if (verb == words.end()) return std::nullopt;
    const std::vector<std::string> rest(verb + 1, words.end());
    const bool alone = rest.empty();
    if (isOneOf(*verb, writeVerbs)) return draftReply(stems, state, question, words);
    if (isOneOf(*verb, addVerbs) && hasAny(rest, evidenceWords))
        return Reply{"You can add a document as evidence. Please confirm with the button.",
                     "add_evidence"};
    if (isOneOf(*verb, checkVerbs) && hasAny(rest, deviceWords))
        return Reply{"I can check this device's security settings; nothing on it is changed. "
                     "Please confirm with the button.",
                     "snapshot_os"};
    if (isOneOf(*verb, playVerbs) && (alone || hasAny(rest, simulationWords)))
        return Reply{"I can start the run. Please confirm with the button.", "play"};
    if (isOneOf(*verb, pauseVerbs) && (alone || hasAny(rest, simulationWords)))
        return Reply{"I can pause the run. Please confirm with the button.", "pause"};
    if (isOneOf(*verb, decideVerbs))
        return Reply{"I cannot approve, close or record anything. A person does that, with the "
                     "buttons, after proving presence."};
    return std::nullopt;
}

std::string readinessAnswer(const State& state) {
    if (state.readiness.empty()) return std::string(notKnown);
    std::string answer = "Readiness is " + std::string(state.readiness) + ".";
    if (state.everythingMet) return answer + " Every criterion is met.";
    if (state.gaps.empty()) return answer;
    return answer + " The next step with the most effect is " + state.gaps.front().id + ".";
}

std::string gapsAnswer(const State& state) {
    if (state.everythingMet) return "There are no open gaps: every criterion is met.";
    if (state.gaps.empty()) return std::string(notKnown) + " No list of criteria is loaded.";
    const std::size_t shown = std::min(gapsListed, state.gaps.size());
    std::string answer = std::to_string(state.gaps.size()) +
                         (state.gaps.size() == 1 ? " gap is open." : " gaps are open.");
    for (std::size_t i = 0; i < shown; ++i)
        answer += "\n" + need(state.gaps[i]);
    if (shown < state.gaps.size())
        answer += "\nAnd " + std::to_string(state.gaps.size() - shown) + " more.";
    return answer;
}

std::string nextAnswer(const State& state) {
    if (state.everythingMet) return "Nothing is left to close: every criterion is met.";
    if (state.gaps.empty()) return std::string(notKnown) + " No list of criteria is loaded.";
    return "The step with the most effect comes first. " + need(state.gaps.front());
}

std::string ownerAnswer(const State& state) {
    if (state.owner.empty()) return std::string(notKnown);
    if (state.owner == "not yet verified") return "No owner is verified yet.";
    return "The owner is " + std::string(state.owner) + ".";
}

std::string answerTo(const Stems& stems, const State& state, std::string_view question,
                     const std::vector<std::string>& words) {
    if (const Gap* gap = namedGap(state, question)) return need(*gap);
    for (const std::string& word : words) {
        if (!looksLikeCriterion(word)) continue;
        std::string answer;
        for (const Gap& gap : state.gaps) {
            if (lowerCased(gap.id).starts_with(word))
                answer += (answer.empty() ? "" : "\n") + need(gap);
        }
        if (!answer.empty()) return answer;
        return std::string(notKnown) + " It is not among the open gaps that I was given.";
    }
    if (const Gap* gap = describedGap(stems, state, question)) return need(*gap);
    if (hasAny(words, gapWords)) return gapsAnswer(state);
    if (hasAny(words, readinessWords)) return readinessAnswer(state);
    if (hasAny(words, nextWords)) return nextAnswer(state);
    if (hasAny(words, ownerWords)) return ownerAnswer(state);
    return std::string(notKnown) +
           " I can tell you about readiness, open gaps, the next step and who the owner is.";
}

} // namespace

std::optional<std::string> assistantReply(const Stems& stems, std::string_view prompt) {
    constexpr std::string_view opening = "Current state:\n";
    constexpr std::string_view label = "\n\nUser: ";
    // The last label: the state may hold text from a file that imitates one.
    const auto at = prompt.rfind(label);
    if (!prompt.starts_with(opening) || at == std::string_view::npos) return std::nullopt;
    const State state = readState(prompt.substr(opening.size(), at - opening.size()));
    const std::string_view question = prompt.substr(at + label.size());
    const std::vector<std::string> words = wordsOf(question);

    Reply reply;
    if (auto asked = command(stems, state, question, words)) {
        reply = std::move(*asked);
    } else {
        reply.answer = answerTo(stems, state, question, words);
    }
    return writeJson({{"answer", reply.answer}, {"action", reply.action}});
}

std::string socReply(const Stems& stems, const GroundTexts& ground, std::string_view question) {
    constexpr double leastScore = 3.0;
    std::vector<std::string> ids;
    for (const GroundTexts::Family& family : ground.families)
        ids.push_back(family.id);
    const std::vector<std::string> words = wordsOf(question);
    auto found =
        std::find_if(ground.families.begin(), ground.families.end(), [&](const auto& each) {
            const std::string id = lowerCased(each.id);
            return std::any_of(words.begin(), words.end(), [&](const std::string& word) {
                return word == id || word.starts_with(id + "-") || word.starts_with(id + ".");
            });
        });
    if (found == ground.families.end()) {
        const auto matches = CriterionRanking(stems, ids, ground).rank(question);
        if (!matches.empty() && matches.front().score >= leastScore) {
            found = std::find_if(ground.families.begin(), ground.families.end(),
                                 [&](const auto& each) { return each.id == matches.front().id; });
        }
    }
    std::string answer = std::string(notKnown) +
                         " I can explain what a control family asks for; for readiness, gaps and "
                         "next steps, ask the assistant in the window.";
    if (found != ground.families.end()) {
        answer = found->id + ", " + found->title + ": " + ended(found->criterion) +
                 " What usually answers it: " + ended(found->policy);
        if (!found->evidence.empty())
            answer += " Auditors expect to see: " + joined(found->evidence, ", ") + ".";
    }
    const auto reply =
        writeJson({{"answer", answer}, {"nodes", Json::array()}, {"bonds", Json::array()}});
    return reply.value_or(R"({"answer":"I don't have that information.","nodes":[],"bonds":[]})");
}

} // namespace kelvo
