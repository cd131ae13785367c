#include "proof/ProofSummary.h"

#include <algorithm>
#include <map>

namespace kelvo {
namespace {

using Kind = ProofTrouble::Kind;

std::string counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

bool concernsLog(Kind kind) {
    return kind <= Kind::copiesDisagree || kind == Kind::foreignLog;
}

bool concernsRecord(Kind kind) {
    return kind >= Kind::recordGone && kind <= Kind::recordUnreadable;
}

bool concernsEvidence(Kind kind) {
    return kind == Kind::evidenceGone || kind == Kind::evidenceNotKept;
}

std::size_t countOf(const ProofComparison& comparison, bool (*concerned)(Kind)) {
    return static_cast<std::size_t>(std::count_if(
        comparison.troubles.begin(), comparison.troubles.end(), [&](const ProofTrouble& trouble) {
            return trouble.needsLook() && concerned(trouble.kind);
        }));
}

} // namespace

std::string lookSentence(const ProofComparison& comparison, const std::vector<Unkept>& unkept) {
    const std::size_t logs = countOf(comparison, concernsLog);
    const std::size_t records = countOf(comparison, concernsRecord);
    const std::size_t evidence = countOf(comparison, concernsEvidence);
    const std::string needs = logs + records == 1 ? " needs a look" : " need a look";
    if (logs > 0 && records > 0) {
        return counted(logs, "log", "logs") + " and " + counted(records, "record", "records") +
               needs;
    }
    if (logs > 0) return counted(logs, "log", "logs") + needs;
    if (records > 0) return counted(records, "record", "records") + needs;
    if (evidence > 0) {
        return "The evidence of " + counted(evidence, "decision", "decisions") + " needs a look";
    }
    const auto waiting = static_cast<std::size_t>(std::count_if(
        unkept.begin(), unkept.end(), [](const Unkept& each) { return !each.waiting; }));
    if (waiting > 0) {
        return counted(waiting, "decision is", "decisions are") + " not kept yet";
    }
    return "Something needs a look";
}

std::string stillHolds(const ProofComparison& comparison) {
    const auto sealed = static_cast<std::size_t>(comparison.asSealed);
    const std::string decisions =
        counted(sealed, "decision is as it was sealed", "decisions are as they were sealed");
    std::size_t logs = 0;
    bool whole = true;
    for (const ComparedLog& log : comparison.logs) {
        if (!log.belongs) continue;
        ++logs;
        whole = whole && log.whole();
    }
    const bool told = countOf(comparison, concernsLog) > 0;
    if (logs == 0 || !whole || told) return decisions + ".";
    const std::string all = logs == 1   ? "the log is whole"
                            : logs == 2 ? "both logs are whole"
                                        : "all " + std::to_string(logs) + " logs are whole";
    return decisions + ", and " + all + ".";
}

std::vector<std::string> notKeptLines(const std::vector<Unkept>& unkept) {
    std::map<std::string, std::size_t> evidence;
    std::map<std::string, std::size_t> lines;
    for (const Unkept& each : unkept) {
        if (each.waiting) continue;
        if (each.line || each.record) {
            ++lines[each.reason];
        } else if (each.evidence) {
            ++evidence[each.reason];
        }
    }
    std::vector<std::string> told;
    for (const auto& [reason, count] : lines) {
        told.push_back(counted(count, "decision is", "decisions are") +
                       " in no log yet: " + reason + ".");
    }
    for (const auto& [reason, count] : evidence) {
        told.push_back("The evidence of " + counted(count, "decision", "decisions") +
                       " was not kept: " + reason + ".");
    }
    return told;
}

} // namespace kelvo
