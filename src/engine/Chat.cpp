#include "base/Files.h"
#include "base/JsonReader.h"
#include "base/Text.h"
#include "base/Uuid.h"
#include "engine/AssistantActions.h"
#include "engine/EngineVM.h"

#include <utility>

namespace kelvo {
namespace {

constexpr const char* unavailableAnswer =
    "On-device assistant unavailable right now — use the buttons on the right.";

/// Far beyond what anybody types; a file of this size is not a chat history.
constexpr std::size_t largestChatFile = std::size_t{64} << 20;

Json toJson(const ChatMsg& message) {
    return {{"id", message.id}, {"role", message.role}, {"text", message.text}, {"ts", message.ts}};
}

} // namespace

void EngineVM::askAssistantNow(const Turn&, const std::string& question) {
    const std::string asked = toValidUtf8(trimmed(question));
    if (asked.empty()) return;
    assistantBusy.set(true);
    propose({});
    appendChat("you", asked);
    const auto work = beginModelWork("Answering your question");
    start([this, work, asked, context = assistantContext()] {
        Assistant::ask(
            ports_.model, asked, context,
            [this, work, asked, resume = resumption()](std::optional<AssistantReply> answer) {
                resume([this, work, asked, answer = std::move(answer)] {
                    endModelWork(work);
                    takeAnswer(asked, answer);
                });
            });
    });
}

std::string EngineVM::assistantContext() const {
    std::vector<std::string> lines = {
        "Owner: " + principal->value_or("not yet verified"),
        // Fixed text, see docs/decisions.md.
        "Readiness: " + percent(*readiness) + " (" + std::to_string(metCount()) +
            "/13 criteria met)",
    };
    if (*mesh) {
        const auto gaps = (*mesh)->gaps();
        lines.emplace_back(gaps.empty() ? "Open gaps: none — every criterion is met."
                                        : "Open gaps (criterion id — what's needed):");
        for (const SOC2Mesh::Node& gap : gaps) {
            lines.push_back("- " + gap.id + ": " + SOC2Mesh::gapText(gap));
        }
    }
    return joined(lines, "\n");
}

void EngineVM::takeAnswer(const std::string& question,
                          const std::optional<AssistantReply>& answer) {
    if (!answer) {
        reply.set(unavailableAnswer);
        appendChat("pellum", unavailableAnswer);
        assistantBusy.set(false);
        return;
    }
    reply.set(answer->answer);
    appendChat("pellum", answer->answer);
    const std::string token = lowerCased(trimmed(answer->action));
    const ProposedStep step = proposedStep(token, *mesh ? &**mesh : nullptr);
    // An answer that proposes nothing leaves alone what an overlapping question may have proposed.
    if (step != ProposedStep{}) propose(step);
    log_.e("assistant_ask", {{"chars", characterCount(question)},
                             {"action", token},
                             {"proposed", proposedAction->has_value() || proposedAddEvidence_}});
    assistantBusy.set(false);
}

void EngineVM::propose(const ProposedStep& step) {
    // The flag has no announcement of its own, so it is in place before the one that follows.
    proposedAddEvidence_ = step.addEvidence;
    proposedAction.set(step.action);
}

std::optional<std::string> EngineVM::proposedActionName() const {
    if (proposedAddEvidence_) return "Add evidence";
    if (!*proposedAction) return std::nullopt;
    return actionName(**proposedAction);
}

void EngineVM::runProposedNow(const Turn& turn) {
    const ProposedStep step{*proposedAction, proposedAddEvidence_};
    propose({});
    if (step.addEvidence) return addEvidenceNow(turn);
    if (step.action) runNow(turn, *step.action);
}

void EngineVM::appendChat(const std::string& speaker, const std::string& text) {
    ChatMsg message{randomUuid(), speaker, text, now()};
    // Earlier lines are kept encoded: a line costs its own encoding and the writing of the file.
    const auto encoded = writeJson(toJson(message));
    if (encoded) encodedChat_ += (encodedChat_.empty() ? "" : ",") + *encoded;
    chatRows_.push_back(std::move(message));
    chat.set(Chat(chatRows_));
    // A history that cannot be written now may be at the next line; nothing else depends on it.
    (void)writeFileAtomically(chatURL(), "[" + encodedChat_ + "]");
}

void EngineVM::loadChat() {
    const auto bytes = readFile(chatURL(), largestChatFile);
    if (!bytes) return;
    auto parsed = parseJson(*bytes);
    if (!parsed) return;
    Json document = Json::object();
    document["chat"] = std::move(*parsed);
    JsonReader reader(document);
    std::deque<ChatMsg> rows;
    std::vector<std::string> encoded;
    reader.array("chat", [&](JsonReader& line) {
        ChatMsg message{line.string("id"), line.string("role"), line.string("text"),
                        line.string("ts")};
        if (!isUuid(message.id)) line.fail("id", "expected a UUID");
        encoded.push_back(writeJson(toJson(message)).value_or(""));
        rows.push_back(std::move(message));
    });
    if (reader.error()) return;
    chatRows_ = std::move(rows);
    encodedChat_ = joined(encoded, ",");
    chat.set(Chat(chatRows_));
}

} // namespace kelvo
