#include "proof/ProofReading.h"
#include "proof/ProofWords.h"

#include <algorithm>

namespace kelvo {
namespace {

using Verdict = CheckpointAnswer::Verdict;

std::string lineCount(std::int64_t lines) {
    return std::to_string(lines) + (lines == 1 ? " line" : " lines");
}

std::string theseLines(std::int64_t lines) {
    return lines == 1 ? "this 1 line" : "these " + std::to_string(lines) + " lines";
}

/// The log whose file has the name of that id; several ids may share their first 8 digits.
const ComparedLog* logInFileOf(const ProofComparison& comparison, const std::string& id) {
    const auto found =
        std::find_if(comparison.logs.begin(), comparison.logs.end(), [&](const ComparedLog& log) {
            return log.id.substr(0, 8) == id.substr(0, 8);
        });
    return found == comparison.logs.end() ? nullptr : &*found;
}

CheckpointAnswer answerOf(const CheckpointBlock& block, const ProofComparison& comparison) {
    CheckpointAnswer answer;
    answer.block = block;
    const ComparedLog* log = logInFileOf(comparison, block.log);
    const auto seen = comparison.seen.find(block.log);
    if (log != nullptr) {
        answer.computer = log->computer;
    } else if (seen != comparison.seen.end()) {
        answer.computer = seen->second.computer;
    }
    const std::string name = "The log of " + logName(answer.computer, block.log);
    if (log == nullptr) {
        answer.verdict = Verdict::gone;
        answer.sentence = name + " is not here any more";
        return answer;
    }
    if (log->id != block.log) {
        answer.verdict = Verdict::anotherId;
        answer.sentence = name + " has another id than this checkpoint names";
        return answer;
    }
    const auto head = log->headAt(block.lines);
    if (!head) {
        answer.verdict = Verdict::shorter;
        answer.sentence =
            name + " has only " + lineCount(log->end.lines) + " of " + theseLines(block.lines);
    } else if (*head != block.sha256) {
        answer.verdict = Verdict::anotherContent;
        answer.sentence =
            name + " does not begin with " + theseLines(block.lines) + ": their content is another";
    } else {
        answer.added = log->end.lines - block.lines;
        const std::string added = answer.added == 0
                                      ? "nothing was added"
                                      : std::to_string(answer.added) +
                                            (answer.added == 1 ? " was" : " were") + " added since";
        answer.sentence = name + " still begins with " + theseLines(block.lines) + "; " + added;
    }
    return answer;
}

/// How many lines behind the first `lines` are dated before `at`.
std::int64_t datedBefore(const ComparedLog& log, std::int64_t lines, std::string_view at) {
    const auto begin = std::min<std::int64_t>(lines, static_cast<std::int64_t>(log.marks.size()));
    const std::int64_t moment = secondsSince1970(at);
    return std::count_if(log.marks.begin() + begin, log.marks.end(),
                         [&](const ComparedLog::Mark& mark) { return mark.ts < moment; });
}

} // namespace

bool CheckpointCheck::holds() const {
    return std::all_of(answers.begin(), answers.end(), [](const CheckpointAnswer& answer) {
        return answer.verdict == Verdict::holds;
    });
}

CheckpointCheck checkCheckpoint(const Checkpoint& checkpoint, const ProofComparison& comparison) {
    CheckpointCheck check;
    for (const CheckpointBlock& block : checkpoint.blocks)
        check.answers.push_back(answerOf(block, comparison));
    std::vector<std::string> late;
    for (const ComparedLog& log : comparison.logs) {
        if (!log.belongs) continue;
        const CheckpointBlock* block = checkpoint.blockOf(log.id);
        const std::string name = logName(log.computer, log.id);
        if (block == nullptr) {
            check.notes.push_back("The log of " + name + " was begun since");
        }
        const std::int64_t lines = datedBefore(log, block == nullptr ? 0 : block->lines,
                                               block == nullptr ? checkpoint.at() : block->at);
        if (lines == 1) {
            late.push_back("1 line of " + name +
                           " is dated before this checkpoint and was not in it: it arrived late, "
                           "or is dated back");
        } else if (lines > 1) {
            late.push_back(std::to_string(lines) + " lines of " + name +
                           " are dated before this checkpoint and were not in it: they arrived "
                           "late, or are dated back");
        }
    }
    check.notes.insert(check.notes.end(), late.begin(), late.end());
    return check;
}

} // namespace kelvo
