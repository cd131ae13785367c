#include "proof/Sheets.h"

#include "base/Json.h"
#include "base/Text.h"

#include <algorithm>
#include <initializer_list>
#include <set>

namespace kelvo {
namespace {

constexpr const char* byteOrderMark = "\xEF\xBB\xBF";

/// Rows of cells as text.
class Sheet {
public:
    explicit Sheet(std::initializer_list<std::string_view> head) : text_(byteOrderMark) {
        std::vector<std::string> cells;
        for (const std::string_view each : head)
            cells.emplace_back(each);
        row(cells);
    }

    void row(const std::vector<std::string>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            text_ += (i == 0 ? "" : ",") + csvCell(cells[i]);
        text_ += "\r\n";
    }

    std::string text() && { return std::move(text_); }

private:
    std::string text_;
};

std::string number(double value) {
    return writeJson(value).value_or("");
}

std::string shortLog(const LoggedDecision& decision) {
    return decision.log.substr(0, 8);
}

std::vector<std::string> logLines(const PackageContent& content,
                                  const std::vector<std::size_t>& places) {
    std::vector<std::string> lines;
    for (const std::size_t place : places)
        lines.push_back(logLine(content.comparison.decisions[place]));
    return lines;
}

/// What the evidence's first closing is known to cover.
std::optional<DaySpan> firstSpan(const PackageContent& content, std::size_t place) {
    const LoggedDecision& decision = content.comparison.decisions[place];
    const CriterionStanding* standing = content.comparison.standing.of(decision.criterion);
    if (standing == nullptr) return std::nullopt;
    for (const Closing& each : standing->closings) {
        if (each.decision == place) return each.covers;
    }
    return std::nullopt;
}

} // namespace

std::string logLine(const LoggedDecision& decision) {
    return shortLog(decision) + ":" + std::to_string(decision.line);
}

std::string csvCell(std::string_view text) {
    std::string cell(text);
    constexpr std::string_view formulas = "=+-@\t\r";
    if (!cell.empty() && formulas.find(cell.front()) != formulas.npos) cell.insert(0, "'");
    if (cell.find_first_of(",\"\r\n") == std::string::npos) return cell;
    std::string quoted = "\"";
    for (const char c : cell) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + "\"";
}

std::string readinessSheet(const PackageContent& content) {
    Sheet sheet({"criterion", "title", "trust_services_criteria", "weight", "level_in_file",
                 "level_now", "assurance", "frequency", "due", "present", "fresh_until", "gap",
                 "log_lines"});
    const ProofStanding& all = content.comparison.standing;
    for (std::size_t i = 0; i < all.criteria.list.size(); ++i) {
        const Criterion& criterion = all.criteria.list[i];
        const CriterionStanding& standing = all.standings[i];
        std::vector<std::size_t> closings;
        for (const Closing& each : standing.closings) {
            if (!each.withdrawn) closings.push_back(each.decision);
        }
        sheet.row({criterion.id, criterion.title, joined(criterion.trustServices, " "),
                   std::to_string(criterion.weight), number(criterion.level),
                   number(standing.level), std::string(nameOf(standing.standing)),
                   std::string(nameOf(criterion.frequency)), std::to_string(standing.due),
                   std::to_string(standing.present),
                   standing.freshUntil ? isoDay(*standing.freshUntil) : "", criterion.gap,
                   joined(logLines(content, closings), " ")});
    }
    return std::move(sheet).text();
}

std::string evidenceSheet(const PackageContent& content) {
    Sheet sheet({"sha256", "kept", "path", "name", "bytes", "criteria", "covers_from", "covers_to",
                 "produced_at", "produced_by", "source", "parameters", "population", "sealed_at",
                 "sealed_by", "log_lines"});
    const ProofComparison& comparison = content.comparison;
    for (const PackedEvidence& each : content.evidence) {
        const LoggedDecision& first = comparison.decisions[each.decisions.front()];
        std::vector<std::string> criteria;
        for (const std::size_t place : each.decisions) {
            const std::string& id = comparison.decisions[place].criterion;
            if (std::find(criteria.begin(), criteria.end(), id) == criteria.end())
                criteria.push_back(id);
        }
        const auto span = firstSpan(content, each.decisions.front());
        const auto dated = comparison.standing.dates.find(each.root);
        const EvidenceItem item =
            dated == comparison.standing.dates.end() ? EvidenceItem() : dated->second;
        const bool kept = !each.path.empty();
        sheet.row({each.root, kept ? "kept" : "missing", each.path, first.evidenceName,
                   kept ? std::to_string(each.bytes) : "", joined(criteria, " "),
                   span ? isoDay(span->from) : "", span ? isoDay(span->to) : "", item.producedAt,
                   item.producedBy, item.source, item.parameters, item.population, first.attestedAt,
                   first.owner, joined(logLines(content, each.decisions), " ")});
    }
    return std::move(sheet).text();
}

std::string decisionsSheet(const PackageContent& content) {
    Sheet sheet({"log", "log_line", "time", "run", "kind", "criterion", "person", "presence",
                 "approved_sentence", "block_hash", "record_sha256", "record"});
    const auto& decisions = content.comparison.decisions;
    for (std::size_t i = 0; i < decisions.size(); ++i) {
        const LoggedDecision& each = decisions[i];
        sheet.row({shortLog(each), std::to_string(each.line), each.ts, std::to_string(each.run),
                   each.repeated ? "repeated" : each.kind, each.criterion, each.account,
                   content.records[i].firedBy, each.approved, each.block, each.record,
                   content.records[i].path});
    }
    return std::move(sheet).text();
}

std::string packageSummary(const PackageContent& content) {
    const ProofComparison& comparison = content.comparison;
    const ProofStanding& standing = comparison.standing;
    Json logs = Json::array();
    for (const CheckpointBlock& block : content.checkpoint.blocks) {
        const ComparedLog* log = comparison.log(block.log);
        logs.push_back({{"log", block.log},
                        {"computer", log == nullptr ? "" : toValidUtf8(log->computer)},
                        {"lines", block.lines},
                        {"sha256", block.sha256}});
    }
    Json assurance = Json::object();
    for (std::size_t i = 0; i < standing.criteria.list.size(); ++i)
        assurance[standing.criteria.list[i].id] = nameOf(standing.standings[i].standing);
    std::set<std::string> unlisted;
    for (const ProofTrouble& trouble : comparison.troubles) {
        if (trouble.kind == ProofTrouble::Kind::recordUnlisted ||
            trouble.kind == ProofTrouble::Kind::recordEarlier) {
            unlisted.insert(toValidUtf8(trouble.file));
        }
    }
    const AuditPeriod& period = standing.period;
    Json summary = {{"v", 1},
                    {"organisation", standing.criteria.organisation},
                    {"at", content.checkpoint.at()},
                    {"logs", std::move(logs)},
                    {"report", period.type2 ? "type2" : "type1"},
                    {"from", isoDay(period.from)},
                    {"to", isoDay(period.to)},
                    {"firm", period.firm},
                    {"readiness", standing.readiness},
                    {"supported", standing.supported},
                    {"decisions", comparison.decisions.size()},
                    {"evidence", content.evidence.size()},
                    {"assurance", std::move(assurance)},
                    {"unlisted", unlisted},
                    {"warnings", content.warnings}};
    return writeJson(summary, JsonLayout::pretty).value_or("{}") + "\n";
}

} // namespace kelvo
