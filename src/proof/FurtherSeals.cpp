#include "proof/FurtherSeals.h"

#include "base/JsonReader.h"
#include "proof/LineParser.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kelvo {
namespace {

constexpr std::array<std::string_view, 3> noteNames = {"exception", "withdrawal", "review"};
constexpr std::array<std::string_view, 4> documentNames = {"description", "assertion", "users",
                                                           "suppliers"};
constexpr std::array<std::string_view, 4> documentTitles = {
    "description of the system", "management's assertion", "what customers do themselves",
    "what suppliers do for us"};

/// The members of an item in their JSON spelling, and where each goes.
constexpr std::array<std::pair<const char*, std::string EvidenceItem::*>, 9> itemMembers = {{
    {"evidence_root", &EvidenceItem::root},
    {"name", &EvidenceItem::name},
    {"covers_from", &EvidenceItem::coversFrom},
    {"covers_to", &EvidenceItem::coversTo},
    {"produced_at", &EvidenceItem::producedAt},
    {"produced_by", &EvidenceItem::producedBy},
    {"source", &EvidenceItem::source},
    {"parameters", &EvidenceItem::parameters},
    {"population", &EvidenceItem::population},
}};

constexpr const char* approve = " — verify to seal";

std::string days(const AuditPeriod& period) {
    return isoDay(period.from) + " to " + isoDay(period.to);
}

std::string items(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " item" : " items");
}

std::string capitalised(std::string_view text) {
    std::string whole(text);
    if (!whole.empty() && whole[0] >= 'a' && whole[0] <= 'z') whole[0] -= 'a' - 'A';
    return whole;
}

/// A name among `names` as their enumeration; none for another.
template <class Kind, std::size_t count>
std::optional<Kind> kindOf(std::string_view name,
                           const std::array<std::string_view, count>& names) {
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) return std::nullopt;
    return static_cast<Kind>(found - names.begin());
}

struct Source {
    std::string_view operator()(const AuditPeriod& /*seal*/) const { return "period"; }
    std::string_view operator()(const EvidenceDates& /*seal*/) const { return "evidence"; }
    std::string_view operator()(const Note& /*seal*/) const { return "note"; }
    std::string_view operator()(const ReportDocument& /*seal*/) const { return "document"; }
    std::string_view operator()(const HandOver& /*seal*/) const { return "handover"; }
};

struct Payload {
    Json operator()(const AuditPeriod& period) const {
        return {{"report", period.type2 ? "type2" : "type1"},
                {"from", isoDay(period.from)},
                {"to", isoDay(period.to)},
                {"categories", period.categories},
                {"firm", period.firm}};
    }
    Json operator()(const EvidenceDates& dates) const {
        Json list = Json::array();
        for (const EvidenceItem& item : dates.items) {
            Json object = Json::object();
            for (const auto& [key, member] : itemMembers)
                object[key] = item.*member;
            list.push_back(std::move(object));
        }
        Json members = Json::object();
        members["items"] = std::move(list);
        return members;
    }
    Json operator()(const Note& note) const {
        return {{"note", nameOf(note.kind)},
                {"criterion", note.criterion},
                {"about", note.about},
                {"from", note.from},
                {"to", note.to},
                {"text", note.text},
                {"response", note.response}};
    }
    Json operator()(const ReportDocument& document) const {
        return {{"document", nameOf(document.kind)},
                {"evidence_root", document.root},
                {"evidence_name", document.name}};
    }
    Json operator()(const HandOver& handOver) const {
        Json list = Json::array();
        for (const HandedLog& each : handOver.logs) {
            list.push_back({{"log", each.log}, {"lines", each.at.lines}, {"head", each.at.head}});
        }
        Json members = Json::object();
        members["recipient"] = handOver.recipient;
        members["logs"] = std::move(list);
        return members;
    }
};

struct Sentence {
    std::string operator()(const AuditPeriod& period) const {
        return "Set the audit period " + days(period) + " (SOC 2 Type " +
               (period.type2 ? "II)" : "I)") + approve;
    }
    std::string operator()(const EvidenceDates& dates) const {
        const std::size_t count = dates.items.size();
        return "Record the dates of " + std::to_string(count) + " evidence " +
               (count == 1 ? "item" : "items") + approve;
    }
    std::string operator()(const Note& note) const {
        const char* article = note.kind == Note::Kind::exception ? "an " : "a ";
        return "Record " + (article + std::string(nameOf(note.kind))) + " for " + note.criterion +
               approve;
    }
    std::string operator()(const ReportDocument& document) const {
        const char* article = document.kind == ReportDocument::Kind::description ? "the " : "";
        return "Record " + (article + std::string(titleOf(document.kind))) + approve;
    }
    std::string operator()(const HandOver& handOver) const {
        return "Hand over the audit package to " + handOver.recipient + approve;
    }
};

struct Title {
    std::string operator()(const AuditPeriod& period) const {
        return "Audit period " + days(period);
    }
    std::string operator()(const EvidenceDates& dates) const {
        return "Evidence dates: " + items(dates.items.size());
    }
    std::string operator()(const Note& note) const {
        return capitalised(nameOf(note.kind)) + " for " + note.criterion;
    }
    std::string operator()(const ReportDocument& document) const {
        return capitalised(titleOf(document.kind));
    }
    std::string operator()(const HandOver& handOver) const {
        return "Handed over to " + handOver.recipient;
    }
};

std::optional<FurtherSeal> readPeriod(JsonReader& reader) {
    const std::string report = reader.string("report");
    const auto from = parseIsoDay(reader.string("from"));
    const auto to = parseIsoDay(reader.string("to"));
    AuditPeriod period{.type2 = report == "type2"};
    period.categories = reader.strings("categories");
    period.firm = reader.string("firm");
    if (!from || !to || *from > *to || (!period.type2 && report != "type1")) return std::nullopt;
    period.from = *from;
    period.to = *to;
    return period;
}

std::optional<FurtherSeal> readDates(JsonReader& reader) {
    EvidenceDates dates;
    reader.array("items", [&dates](JsonReader& member) {
        EvidenceItem item;
        for (const auto& [key, into] : itemMembers)
            item.*into = member.string(key);
        dates.items.push_back(std::move(item));
    });
    return dates;
}

std::optional<FurtherSeal> readNote(JsonReader& reader) {
    const auto kind = kindOf<Note::Kind>(reader.string("note"), noteNames);
    Note note{.kind = kind.value_or(Note::Kind::exception),
              .criterion = reader.string("criterion"),
              .about = reader.string("about"),
              .from = reader.string("from"),
              .to = reader.string("to"),
              .text = reader.string("text"),
              .response = reader.string("response")};
    if (!kind) return std::nullopt;
    return note;
}

std::optional<FurtherSeal> readDocument(JsonReader& reader) {
    const auto kind = kindOf<ReportDocument::Kind>(reader.string("document"), documentNames);
    ReportDocument document{.kind = kind.value_or(ReportDocument::Kind::description),
                            .root = reader.string("evidence_root"),
                            .name = reader.string("evidence_name")};
    if (!kind || !isHash(document.root)) return std::nullopt;
    return document;
}

std::optional<FurtherSeal> readHandOver(JsonReader& reader) {
    HandOver handOver{.recipient = reader.string("recipient"), .logs = {}};
    reader.array("logs", [&handOver](JsonReader& member) {
        handOver.logs.push_back(
            {.log = member.string("log"),
             .at = {.lines = member.integer("lines"), .head = member.string("head")}});
    });
    return handOver;
}

} // namespace

std::string_view sourceOf(const FurtherSeal& seal) {
    return std::visit(Source(), seal);
}

Json furtherPayload(const FurtherSeal& seal) {
    Json payload = std::visit(Payload(), seal);
    payload["sourceDb"] = sourceOf(seal);
    return payload;
}

std::string furtherSentence(const FurtherSeal& seal) {
    return std::visit(Sentence(), seal);
}

std::string furtherTitle(const FurtherSeal& seal) {
    return std::visit(Title(), seal);
}

std::optional<FurtherSeal> readFurtherSeal(std::string_view source, std::string_view payload) {
    using Read = std::optional<FurtherSeal> (*)(JsonReader&);
    constexpr std::array<std::pair<std::string_view, Read>, 5> readers = {{
        {"period", readPeriod},
        {"evidence", readDates},
        {"note", readNote},
        {"document", readDocument},
        {"handover", readHandOver},
    }};
    for (const auto& [name, read] : readers) {
        if (name != source) continue;
        const auto document = parseJson(payload);
        if (!document || !document->is_object()) return std::nullopt;
        JsonReader reader(*document);
        auto seal = read(reader);
        if (reader.error()) return std::nullopt;
        return seal;
    }
    return std::nullopt;
}

std::string_view nameOf(Note::Kind kind) {
    return noteNames[static_cast<std::size_t>(kind)];
}

std::string_view nameOf(ReportDocument::Kind kind) {
    return documentNames[static_cast<std::size_t>(kind)];
}

std::string_view titleOf(ReportDocument::Kind kind) {
    return documentTitles[static_cast<std::size_t>(kind)];
}

} // namespace kelvo
