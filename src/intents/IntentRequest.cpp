#include "intents/IntentRequest.h"

#include "base/Text.h"

namespace kelvo {
namespace {

constexpr std::size_t longestQuote = 40;

/// What was given, short enough to be shown.
std::string quoted(std::string_view given) {
    const bool whole = given.size() <= longestQuote;
    return "“" + toValidUtf8(given.substr(0, longestQuote)) + (whole ? "”" : "…”");
}

tl::expected<Intent, std::string> readQuestion(std::string_view question) {
    if (question.size() > longestQuestion) {
        return tl::unexpected("The question is longer than " + std::to_string(longestQuestion) +
                              " bytes.");
    }
    if (!isValidUtf8(question))
        return tl::unexpected(std::string("The question is not UTF-8 text."));
    if (trimmed(question).empty()) return tl::unexpected(std::string("The question is empty."));
    return AskKelvoAgentIntent{std::string(question)};
}

} // namespace

tl::expected<Intent, std::string> readIntent(std::string_view name, std::string_view parameter) {
    if (name == "ask") return readQuestion(parameter);
    if (name == "adopt") {
        if (const auto family = ccFamily(parameter)) return AdoptFamilyIntent{*family};
        return tl::unexpected(quoted(parameter) +
                              " is no control family. The families are CC1 to CC9.");
    }
    const bool run = name == "run";
    if (!run && name != "approve") {
        return tl::unexpected(quoted(name) +
                              " is no intent. The intents are ask, adopt, run and approve.");
    }
    if (!parameter.empty())
        return tl::unexpected("“" + std::string(name) + "” takes no parameter.");
    if (run) return PlayKelvoIntent{};
    return SealKelvoIntent{};
}

std::string_view requestName(const Intent& intent) {
    struct Name {
        std::string_view operator()(const AskKelvoAgentIntent&) const { return "ask"; }
        std::string_view operator()(const AdoptFamilyIntent&) const { return "adopt"; }
        std::string_view operator()(const PlayKelvoIntent&) const { return "run"; }
        std::string_view operator()(const SealKelvoIntent&) const { return "approve"; }
    };
    return std::visit(Name{}, intent);
}

std::string requestParameter(const Intent& intent) {
    if (const auto* ask = std::get_if<AskKelvoAgentIntent>(&intent)) return ask->question;
    if (const auto* adopt = std::get_if<AdoptFamilyIntent>(&intent)) return rawValue(adopt->family);
    return {};
}

std::string intentId(const Intent& intent) {
    const std::string parameter = requestParameter(intent);
    const std::string name(requestName(intent));
    return parameter.empty() ? name : name + ":" + parameter;
}

tl::expected<Intent, std::string> readIntentId(std::string_view id) {
    const std::size_t colon = id.find(':');
    if (colon == std::string_view::npos) return readIntent(id, {});
    auto intent = readIntent(id.substr(0, colon), id.substr(colon + 1));
    if (intent && intentId(*intent) != id) return tl::unexpected(quoted(id) + " is no intent.");
    return intent;
}

} // namespace kelvo
