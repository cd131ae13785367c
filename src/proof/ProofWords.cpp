#include "proof/ProofWords.h"

#include "base/Text.h"
#include "proof/ProofReading.h"

#include <array>
#include <map>
#include <tuple>

namespace kelvo {
namespace {

using Kind = ProofTrouble::Kind;

std::string counted(std::int64_t count, std::string_view one, std::string_view many) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

std::string records(std::size_t count) {
    return counted(static_cast<std::int64_t>(count), "record", "records");
}

std::string was(std::size_t count) {
    return count == 1 ? " was" : " were";
}

std::string duration(std::int64_t seconds) {
    constexpr std::int64_t minute = 60;
    constexpr std::int64_t hour = 60 * minute;
    constexpr std::int64_t day = 24 * hour;
    if (seconds >= 2 * day) return counted(seconds / day, "day", "days");
    if (seconds >= hour) return counted(seconds / hour, "hour", "hours");
    return counted(seconds / minute, "minute", "minutes");
}

std::string lineOfLog(const ProofTrouble& trouble) {
    const std::string name = logName(trouble.computer, trouble.log);
    const std::string log = "he log of " + name;
    switch (trouble.kind) {
    case Kind::logDamaged: {
        const std::string line = "Line " + std::to_string(trouble.line) + " of t" + log;
        if (trouble.unreadable || trouble.line == 1) return line + " cannot be read.";
        return line + " does not follow line " + std::to_string(trouble.line - 1) + ".";
    }
    case Kind::ownLogLeft:
        return "This computer's log was continued elsewhere. A new one was begun.";
    case Kind::logGone:
        return "T" + log + " is gone.";
    case Kind::logRewritten:
        return "T" + log + " no longer begins as it did.";
    case Kind::logShorter:
        return "T" + log + " is shorter than it was.";
    case Kind::copiesDisagree:
        return "Two copies of t" + log + " disagree from line " + std::to_string(trouble.line) +
               " on.";
    case Kind::clockAhead:
        return "The clock of " + name + " is " + duration(trouble.seconds) + " ahead.";
    case Kind::recordGone:
    case Kind::recordAltered:
    case Kind::recordUnlisted:
    case Kind::recordEarlier:
    case Kind::recordUnreadable:
    case Kind::evidenceGone:
    case Kind::evidenceNotKept:
    case Kind::graphChanged:
    case Kind::foreignLog:
    case Kind::notCountedYet:
    case Kind::copyHarmless:
    case Kind::arriving:
        break;
    }
    return "";
}

std::string lineOfRecords(const ProofTrouble& first, std::size_t count) {
    switch (first.kind) {
    case Kind::recordGone:
        return records(count) + (count == 1 ? " is gone." : " are gone.");
    case Kind::recordAltered:
        return records(count) + was(count) + " changed after " + (count == 1 ? "it" : "they") +
               was(count) + " sealed.";
    case Kind::recordUnlisted:
        return first.counted ? "Readiness counts " + records(count) + " that no log knows."
                             : records(count) + (count == 1 ? " is" : " are") + " in no log.";
    case Kind::recordEarlier:
        return counted(static_cast<std::int64_t>(count), "earlier record is",
                       "earlier records are") +
               " in no log yet.";
    case Kind::recordUnreadable:
        return records(count) + " cannot be read, so readiness leaves " +
               (count == 1 ? "it" : "them") +
               " out: " + withControlsShown(toValidUtf8(first.file)) + (count == 1 ? "." : ", ….");
    case Kind::evidenceGone:
        return "The kept evidence of " +
               counted(static_cast<std::int64_t>(count), "decision is gone.", "decisions is gone.");
    case Kind::evidenceNotKept:
        return "The evidence of " +
               counted(static_cast<std::int64_t>(count), "decision", "decisions") +
               " was not kept: " + first.reason + ".";
    case Kind::graphChanged:
        return first.computer.empty()
                   ? "The list of criteria was changed."
                   : "The list of criteria was changed on " + first.computer + ".";
    case Kind::logDamaged:
    case Kind::ownLogLeft:
    case Kind::logGone:
    case Kind::logRewritten:
    case Kind::logShorter:
    case Kind::copiesDisagree:
    case Kind::clockAhead:
    case Kind::foreignLog:
    case Kind::notCountedYet:
    case Kind::copyHarmless:
    case Kind::arriving:
        break;
    }
    return "";
}

bool ofLog(Kind kind) {
    return kind <= Kind::copiesDisagree || kind == Kind::clockAhead;
}

} // namespace

std::string logName(std::string_view computer, std::string_view id) {
    const std::string_view name = computer.empty() ? id.substr(0, 8) : computer;
    return withControlsShown(toValidUtf8(name));
}

std::string dayInWords(std::string_view moment, std::string_view now) {
    constexpr std::array<const char*, 12> months = {
        "January", "February", "March",     "April",   "May",      "June",
        "July",    "August",   "September", "October", "November", "December"};
    if (moment.size() < 10 || now.size() < 4) return std::string(moment);
    const int month = (moment[5] - '0') * 10 + moment[6] - '0';
    const int day = (moment[8] - '0') * 10 + moment[9] - '0';
    if (month < 1 || month > 12) return std::string(moment);
    std::string words = std::to_string(day) + " " + months[static_cast<std::size_t>(month) - 1];
    if (moment.substr(0, 4) != now.substr(0, 4)) words += " " + std::string(moment.substr(0, 4));
    return words;
}

std::string wholeSentence(const ProofComparison& comparison) {
    std::string sentence = counted(comparison.counted, "decision", "decisions");
    if (comparison.computers > 1) {
        sentence += " on " + std::to_string(comparison.computers) + " computers";
    }
    std::size_t logs = 0;
    for (const ComparedLog& log : comparison.logs)
        logs += log.belongs ? 1 : 0;
    sentence += logs > 1 ? ", logs whole" : ", log whole";
    if (!comparison.lastCheckpoint) return sentence + ", no checkpoint yet";
    const std::string since = comparison.sinceCheckpoint == 0
                                  ? "none"
                                  : counted(comparison.sinceCheckpoint, "decision", "decisions");
    return sentence + ", last checkpoint " +
           dayInWords(*comparison.lastCheckpoint, comparison.now) + " (" + since + " since)";
}

std::vector<std::string> readinessRemarks(const ProofComparison& comparison) {
    std::vector<std::string> remarks;
    if (comparison.countedUnlisted > 0) {
        remarks.push_back("readiness counts " +
                          records(static_cast<std::size_t>(comparison.countedUnlisted)) +
                          " that no log knows");
    }
    for (const ProofTrouble& trouble : comparison.troubles) {
        if (trouble.kind != Kind::notCountedYet) continue;
        remarks.push_back(counted(trouble.count, "decision", "decisions") + " of " +
                          logName(trouble.computer, trouble.log) +
                          (trouble.count == 1 ? " is" : " are") + " not counted yet");
    }
    return remarks;
}

std::vector<std::string> troubleLines(const ProofComparison& comparison) {
    std::vector<std::string> lines;
    // Records of one kind share a line; what is told of logs stands alone.
    using Group = std::tuple<Kind, bool, std::string>;
    std::map<Group, std::size_t> groups;
    const auto groupOf = [](const ProofTrouble& trouble) {
        const bool byCount = trouble.kind == Kind::recordUnlisted && !trouble.counted;
        return Group{trouble.kind, byCount,
                     trouble.kind == Kind::evidenceNotKept ? trouble.reason : ""};
    };
    for (const ProofTrouble& trouble : comparison.troubles) {
        if (!ofLog(trouble.kind)) ++groups[groupOf(trouble)];
    }
    for (const ProofTrouble& trouble : comparison.troubles) {
        if (!trouble.needsLook()) continue;
        if (ofLog(trouble.kind)) {
            lines.push_back(lineOfLog(trouble));
            continue;
        }
        const auto group = groups.find(groupOf(trouble));
        if (group == groups.end()) continue;
        lines.push_back(lineOfRecords(trouble, group->second));
        groups.erase(group);
    }
    return lines;
}

std::string checkpointReminder(const ProofComparison& comparison) {
    if (comparison.decisions.empty()) return "";
    constexpr std::int64_t day = 24 * 60 * 60;
    const auto& last = comparison.lastCheckpoint;
    const std::string& since = last ? *last : comparison.decisions.front().ts;
    const std::int64_t days = (secondsSince1970(comparison.now) - secondsSince1970(since)) / day;
    if (days < 31) return "";
    return last ? "The last checkpoint is " + std::to_string(days) + " days old."
                : "There is no checkpoint of the log yet.";
}

std::string adoptSentence(std::size_t records) {
    return "Adopt " +
           counted(static_cast<std::int64_t>(records), "earlier record", "earlier records") +
           " into the log — verify to keep";
}

std::string supplySentence(std::string_view name) {
    return "Supply the evidence " + std::string(name) + " — verify to keep";
}

} // namespace kelvo
