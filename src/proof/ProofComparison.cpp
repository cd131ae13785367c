#include "proof/ProofComparison.h"

#include "base/Text.h"
#include "base/Time.h"
#include "proof/ProofReading.h"
#include "proof/RecordComparison.h"
#include "proof/Waiting.h"

#include <algorithm>
#include <tuple>
#include <unordered_set>

namespace kelvo {
namespace {

using Kind = ProofTrouble::Kind;

/// Clocks of two computers may differ by this without anybody having to be told.
constexpr std::int64_t clockTolerance = 120;

class Comparing {
public:
    explicit Comparing(const ProofInput& input)
        : input_(input), reading_(input.folders, limits(input)), waiting_(input) {}

    ProofComparison compare() {
        result_.now = input_.now;
        result_.generation = input_.generation;
        result_.ownLog = input_.state.log;
        result_.seen = input_.state.seen;
        reading_.read();
        result_.records = reading_.records.size();
        result_.checkpoints = storedCheckpoints(input_.folders.checkpoints());
        // One that was issued since knows of lines that are not read.
        std::erase_if(result_.checkpoints, [this](const StoredCheckpoint& stored) {
            const auto& blocks = stored.checkpoint.blocks;
            return std::any_of(blocks.begin(), blocks.end(), [this](const CheckpointBlock& each) {
                return each.lines > limits(input_).of(each.log);
            });
        });
        findOwn();
        findBelonging();
        waiting_.othersExist(otherLogsExist());
        judgeLogs();
        judgeKnownLogs();
        judgeCopies();
        gatherDecisions();
        judgeGraph();
        compareRecords(input_, reading_, waiting_, result_);
        count();
        stand();
        finish();
        return std::move(result_);
    }

private:
    static ReadLimits limits(const ProofInput& input) {
        if (input.until.empty()) return {};
        return {.own = input.state.log, .until = &input.until};
    }

    ProofTrouble& tell(Kind kind, const ComparedLog& log) {
        ProofTrouble trouble;
        trouble.kind = kind;
        trouble.log = log.id;
        trouble.computer = log.computer;
        trouble.organisation = log.organisation;
        trouble.own = log.own;
        return result_.troubles.emplace_back(std::move(trouble));
    }

    void findOwn() {
        for (ReadLog& each : reading_.logs) {
            each.log.own = !each.log.id.empty() && each.log.id == input_.state.log;
            // A first line that cannot be read leaves the name, and what was known by it.
            if (each.log.id.empty()) nameByMemory(each.log);
        }
    }

    void nameByMemory(ComparedLog& log) const {
        const auto fits = [&](const std::string& id) {
            return log.fileName == "seals-" + id.substr(0, 8) + ".ndjson";
        };
        log.own = fits(input_.state.log);
        for (const auto& [id, seen] : input_.state.seen) {
            if (!fits(id)) continue;
            log.computer = seen.computer;
            log.organisation = seen.organisation;
        }
    }

    /// A log belongs that names the organisation as the graph does now, or as one that belongs
    /// does; so an organisation may be renamed.
    void findBelonging() {
        std::set<std::string> names = {reading_.organisationNow};
        std::vector<std::set<std::string>> named;
        for (const ReadLog& each : reading_.logs) {
            std::set<std::string> own = {each.log.organisation};
            for (const std::string& graph : each.graphs) {
                if (std::string name = reading_.organisationOf(graph); !name.empty()) {
                    own.insert(std::move(name));
                }
            }
            named.push_back(std::move(own));
        }
        for (bool found = true; found;) {
            found = false;
            for (std::size_t i = 0; i < named.size(); ++i) {
                ComparedLog& log = reading_.logs[i].log;
                if (log.belongs || log.id.empty()) continue;
                const bool shares =
                    std::any_of(named[i].begin(), named[i].end(),
                                [&](const std::string& name) { return names.contains(name); });
                if (!log.own && !shares) continue;
                log.belongs = found = true;
                names.insert(named[i].begin(), named[i].end());
            }
        }
    }

    bool otherLogsExist() const {
        return !input_.state.seen.empty() ||
               std::any_of(reading_.logs.begin(), reading_.logs.end(),
                           [](const ReadLog& each) { return !each.log.own; });
    }

    void judgeLogs() {
        const auto now = parseIso8601(input_.now);
        for (ReadLog& each : reading_.logs) {
            ComparedLog& log = each.log;
            if (log.damagedLine) {
                ProofTrouble& trouble = tell(Kind::logDamaged, log);
                trouble.file = log.fileName;
                trouble.line = *log.damagedLine;
                trouble.unreadable = log.unreadable;
            }
            if (!log.belongs && !log.id.empty()) tell(Kind::foreignLog, log);
            log.arriving = each.torn && !log.own;
            if (log.arriving) tell(Kind::arriving, log).since = waiting_.since("end " + log.id);
            const auto last = parseIso8601(log.lastTs);
            if (now && last) {
                const auto ahead = std::chrono::duration_cast<std::chrono::seconds>(*last - *now);
                if (ahead.count() > clockTolerance) {
                    tell(Kind::clockAhead, log).seconds = ahead.count();
                }
            }
            result_.logs.push_back(log);
        }
        std::sort(result_.logs.begin(), result_.logs.end(), [](const auto& a, const auto& b) {
            return std::tuple(!a.own, a.id) < std::tuple(!b.own, b.id);
        });
        if (!input_.left.empty()) {
            ProofTrouble trouble;
            trouble.kind = Kind::ownLogLeft;
            trouble.log = input_.left;
            trouble.own = true;
            result_.troubles.push_back(std::move(trouble));
        }
    }

    /// How a log that is known to have had `at` stands now.
    void judgeKnown(const std::string& id, const LogPosition& at, const SeenLog& seen,
                    const std::string& checkpoint) {
        if (at.lines == 0) return;
        ComparedLog known;
        known.id = id;
        known.computer = seen.computer;
        known.organisation = seen.organisation;
        known.own = id == input_.state.log;
        const ComparedLog* log = result_.log(id);
        if (log == nullptr) {
            // A file of its name whose first line is damaged was told already.
            const std::string name = input_.folders.log(id).filename();
            for (const ReadLog& each : reading_.logs) {
                if (each.log.fileName == name && each.log.damagedLine) return;
            }
            return missing(Kind::logGone, known, at.lines, checkpoint);
        }
        const auto head = log->headAt(at.lines);
        if (head == at.head) return;
        if (head) return tellOnce(Kind::logRewritten, *log, at.lines, checkpoint);
        if (!log->damagedLine) {
            missing(Kind::logShorter, *log, at.lines - log->end.lines, checkpoint);
        }
    }

    /// What only a checkpoint knows of another computer's log may still be on its way.
    void missing(Kind kind, const ComparedLog& log, std::int64_t lines,
                 const std::string& checkpoint) {
        if (!checkpoint.empty() && !log.own && waiting_.stillArriving("log " + log.id)) {
            if (told(Kind::arriving, log.id)) return;
            tell(Kind::arriving, log).since = waiting_.since("log " + log.id);
            return;
        }
        tellOnce(kind, log, lines, checkpoint);
    }

    bool told(Kind kind, const std::string& id) const {
        return std::any_of(result_.troubles.begin(), result_.troubles.end(),
                           [&](const auto& each) { return each.kind == kind && each.log == id; });
    }

    void tellOnce(Kind kind, const ComparedLog& log, std::int64_t lines,
                  const std::string& checkpoint) {
        for (const Kind each : {Kind::logGone, Kind::logRewritten, Kind::logShorter}) {
            if (told(each, log.id)) return;
        }
        ProofTrouble& trouble = tell(kind, log);
        trouble.line = lines;
        trouble.file = checkpoint;
    }

    void judgeKnownLogs() {
        judgeOwn();
        for (const auto& [id, seen] : input_.state.seen)
            judgeKnown(id, seen.at, seen, "");
        for (const StoredCheckpoint& stored : result_.checkpoints) {
            for (const CheckpointBlock& block : stored.checkpoint.blocks) {
                const auto seen = input_.state.seen.find(block.log);
                SeenLog named;
                if (seen != input_.state.seen.end()) named = seen->second;
                if (named.organisation.empty()) named.organisation = block.of;
                judgeKnown(block.log, {block.lines, block.sha256}, named, stored.fileName);
            }
        }
        for (const ComparedLog& log : result_.logs) {
            if (log.own || log.id.empty()) continue;
            const auto seen = result_.seen.find(log.id);
            // What contradicts the memory does not replace it: it is told as long as it is so.
            if (seen == result_.seen.end() ||
                log.headAt(seen->second.at.lines) == seen->second.at.head) {
                result_.seen[log.id] = {log.end, log.computer, log.organisation};
            }
        }
    }

    /// The own log ends where this computer left it: before or after its last line.
    void judgeOwn() {
        const ProofState& state = input_.state;
        const ComparedLog* own = result_.log(state.log);
        if (own != nullptr && (own->end == state.before || own->end == state.after)) return;
        // Its first line may not have been written.
        if (own == nullptr && state.before.lines == 0) return;
        SeenLog known;
        known.computer = input_.computer;
        judgeKnown(state.log, state.before, known, "");
        if (own != nullptr && !own->damagedLine &&
            own->headAt(state.before.lines) == state.before.head) {
            tell(Kind::ownLogLeft, *own);
        }
    }

    void judgeCopies() {
        for (const ReadLog& copy : reading_.copies) {
            const ComparedLog* log = result_.log(copy.log.id);
            if (log == nullptr) {
                tell(Kind::logGone, copy.log).file = copy.log.fileName;
                continue;
            }
            const std::size_t common = std::min(log->marks.size(), copy.log.marks.size());
            std::size_t same = 0;
            while (same < common && log->marks[same].head == copy.log.marks[same].head)
                ++same;
            const bool disagrees =
                same < common || (copy.log.damagedLine && same < log->marks.size());
            ProofTrouble& trouble =
                tell(disagrees ? Kind::copiesDisagree : Kind::copyHarmless, *log);
            trouble.file = copy.log.fileName;
            trouble.line = disagrees ? static_cast<std::int64_t>(same) + 1 : 0;
        }
    }

    void gatherDecisions() {
        std::set<std::string> withdrawn;
        for (ReadLog& each : reading_.logs) {
            if (!each.log.belongs) continue;
            withdrawn.insert(each.withdrawn.begin(), each.withdrawn.end());
            result_.decisions.reserve(result_.decisions.size() + each.decisions.size());
            for (LoggedDecision& decision : each.decisions) {
                decision.own = each.log.own;
                if (decision.adopted) {
                    const KeptRecord* kept = reading_.keptOf(decision.record);
                    if (kept != nullptr && parseIso8601(kept->asOf)) decision.time = kept->asOf;
                }
                result_.decisions.push_back(std::move(decision));
            }
        }
        const auto before = [](const LoggedDecision& a, const LoggedDecision& b) {
            return std::tie(a.time, a.log, a.line) < std::tie(b.time, b.log, b.line);
        };
        // A single log is in order mostly, and moving its lines about costs more than a look.
        if (!std::is_sorted(result_.decisions.begin(), result_.decisions.end(), before)) {
            std::sort(result_.decisions.begin(), result_.decisions.end(), before);
        }
        std::unordered_set<std::string_view> sealed;
        for (const LoggedDecision& decision : result_.decisions) {
            if (!decision.adopted) sealed.insert(decision.record);
        }
        for (LoggedDecision& decision : result_.decisions) {
            if (decision.adopted) decision.repeated = !sealed.insert(decision.record).second;
            decision.withdrawn = withdrawn.contains(decision.block);
        }
    }

    /// Tells where the list of criteria is not the one that the own log's last run read.
    void judgeGraph() {
        const ComparedLog* own = result_.log(input_.state.log);
        if (own == nullptr || own->graph.empty() || own->graph == reading_.graphNow) return;
        std::string computer;
        for (const ReadLog& each : reading_.logs) {
            if (!each.log.belongs) continue;
            if (each.sealedGraphs.contains(reading_.graphNow)) return;
            if (each.log.graph == reading_.graphNow) computer = each.log.computer;
        }
        ProofTrouble& trouble = tell(Kind::graphChanged, *own);
        trouble.computer = computer;
        trouble.raised = raisedLevels(input_.folders, own->graph, result_.decisions);
    }

    void count() {
        std::set<std::string> computers;
        for (const ComparedLog& log : result_.logs) {
            if (log.belongs) computers.insert(log.computer);
        }
        result_.computers = static_cast<std::int64_t>(computers.size());
        const StoredCheckpoint* last =
            result_.checkpoints.empty() ? nullptr : &result_.checkpoints.back();
        if (last != nullptr) result_.lastCheckpoint = last->checkpoint.at();
        for (const LoggedDecision& decision : result_.decisions) {
            if (decision.repeated) continue;
            ++result_.counted;
            const CheckpointBlock* block =
                last == nullptr ? nullptr : last->checkpoint.blockOf(decision.log);
            if (block == nullptr || decision.line > block->lines) ++result_.sinceCheckpoint;
        }
    }

    void stand() {
        const auto moment = parseIso8601(input_.now);
        const Day today = moment ? std::chrono::floor<std::chrono::days>(*moment) : Day();
        auto criteria = input_.graph ? readCriteria(*input_.graph) : Criteria();
        result_.standing =
            standingOf(std::move(criteria).value_or(Criteria()), result_.decisions, today);
    }

    void finish() {
        std::stable_sort(result_.troubles.begin(), result_.troubles.end(),
                         [](const auto& a, const auto& b) { return a.kind < b.kind; });
        result_.missed = waiting_.missed();
    }

    const ProofInput& input_;
    ProofReading reading_;
    Waiting waiting_;
    ProofComparison result_;
};

} // namespace

std::optional<std::string> ComparedLog::headAt(std::int64_t lines) const {
    if (lines < 0 || lines > static_cast<std::int64_t>(marks.size())) return std::nullopt;
    if (lines == 0) return LogPosition().head;
    return hex(marks[static_cast<std::size_t>(lines) - 1].head);
}

bool ProofTrouble::needsLook() const {
    return kind < Kind::foreignLog;
}

const ComparedLog* ProofComparison::log(std::string_view id) const {
    const auto found = std::find_if(logs.begin(), logs.end(), [&](const ComparedLog& each) {
        return !id.empty() && each.id == id;
    });
    return found == logs.end() ? nullptr : &*found;
}

ProofComparison compareProof(const ProofInput& input) {
    return Comparing(input).compare();
}

} // namespace kelvo
