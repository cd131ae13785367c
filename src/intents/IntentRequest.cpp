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

/// The intent with its parameter.
struct Read {
    using Result = tl::expected<Intent, std::string>;
    std::string_view parameter;

    Result operator()(const AskKelvoAgentIntent&) const { return readQuestion(parameter); }
    Result operator()(const AdoptFamilyIntent&) const {
        if (const auto family = ccFamily(parameter)) return AdoptFamilyIntent{*family};
        return tl::unexpected(quoted(parameter) + " is no control family. The families are " +
                              rawValue(allCCFamilies.front()) + " to " +
                              rawValue(allCCFamilies.back()) + ".");
    }
    Result operator()(const PlayKelvoIntent& intent) const { return bare(intent); }
    Result operator()(const SealKelvoIntent& intent) const { return bare(intent); }

private:
    Result bare(const Intent& intent) const {
        if (parameter.empty()) return intent;
        return tl::unexpected("“" + std::string(requestName(intent)) + "” takes no parameter.");
    }
};

} // namespace

tl::expected<Intent, std::string> readIntent(std::string_view name, std::string_view parameter) {
    std::string names;
    for (const Intent& each : oneOfEach()) {
        if (requestName(each) == name) return std::visit(Read{parameter}, each);
        const bool last = each == oneOfEach().back();
        names += (names.empty() ? "" : last ? " and " : ", ") + std::string(requestName(each));
    }
    return tl::unexpected(quoted(name) + " is no intent. The intents are " + names + ".");
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
    struct Parameter {
        std::string operator()(const AskKelvoAgentIntent& ask) const { return ask.question; }
        std::string operator()(const AdoptFamilyIntent& adopt) const {
            return rawValue(adopt.family);
        }
        std::string operator()(const PlayKelvoIntent&) const { return {}; }
        std::string operator()(const SealKelvoIntent&) const { return {}; }
    };
    return std::visit(Parameter(), intent);
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
