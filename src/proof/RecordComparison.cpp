#include "proof/RecordComparison.h"

#include "base/Json.h"
#include "base/Sha256.h"
#include "proof/RecordRebuild.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace kelvo {
namespace {

using Kind = ProofTrouble::Kind;
using Evidence = LoggedDecision::Evidence;

constexpr std::size_t largestGraph = std::size_t{16} << 20;

std::optional<std::string> memberText(const Json& document, const std::string& key) {
    const auto found = document.find(key);
    if (found == document.end()) return std::nullopt;
    return writeJson(*found);
}

/// The members that differ; none of them where one of the two is no object.
std::vector<MemberDifference> differences(std::string_view sealed, std::string_view now) {
    const auto before = parseJson(sealed);
    const auto after = parseJson(now);
    std::vector<MemberDifference> found;
    if (!before || !after || !before->is_object() || !after->is_object()) return found;
    Json all = *before;
    all.update(*after);
    for (const auto& [key, value] : all.items()) {
        auto was = memberText(*before, key);
        auto is = memberText(*after, key);
        if (was != is) found.push_back({key, std::move(was), std::move(is)});
    }
    return found;
}

class Records {
public:
    Records(const ProofInput& input, const ProofReading& reading, Waiting& waiting,
            ProofComparison& result)
        : input_(input), reading_(reading), waiting_(waiting), result_(result),
          vault_(input.folders, "") {
        named_.reserve(result.decisions.size());
        for (const LoggedDecision& decision : result.decisions)
            named_[decision.file].add(decision);
        for (const ComparedLog& log : result.logs) {
            if (log.belongs && !log.marks.empty()) {
                begun_ = std::min(begun_, log.marks.front().ts);
            }
        }
        for (const ReadLog& each : reading.logs) {
            if (each.log.belongs) supplied_.insert(each.supplied.begin(), each.supplied.end());
        }
    }

    void compare() {
        const std::size_t before = result_.troubles.size();
        for (const ReadRecord& record : reading_.records)
            judge(record);
        std::sort(result_.troubles.begin() + static_cast<std::ptrdiff_t>(before),
                  result_.troubles.end(),
                  [](const auto& a, const auto& b) { return a.file < b.file; });
        for (const LoggedDecision& decision : result_.decisions) {
            const Lines& lines = named_.at(decision.file);
            if (lines.last == &decision && !lines.present) judgeGone(decision);
        }
        for (LoggedDecision& decision : result_.decisions)
            judgeEvidence(decision);
        judgeCounted();
    }

private:
    /// The decisions that name one record file, in their order.
    struct Lines {
        const LoggedDecision* first = nullptr;
        std::vector<const LoggedDecision*> later; ///< hardly ever any
        const LoggedDecision* last = nullptr;
        bool present = false; ///< the file is there

        void add(const LoggedDecision& decision) {
            if (first == nullptr)
                first = &decision;
            else
                later.push_back(&decision);
            last = &decision;
        }

        /// How many of them count for a file with that hash; none where no line has it.
        std::optional<std::int64_t> counting(const std::optional<Sha256Digest>& hash) const {
            if (!hash) return std::nullopt;
            bool known = isHexOf(*hash, first->record);
            std::int64_t count = first->repeated ? 0 : 1;
            for (const LoggedDecision* each : later) {
                known = known || isHexOf(*hash, each->record);
                count += each->repeated ? 0 : 1;
            }
            return known ? std::optional(count) : std::nullopt;
        }
    };

    ProofTrouble& tell(Kind kind, const std::string& file, const LoggedDecision* decision) {
        ProofTrouble trouble;
        trouble.kind = kind;
        trouble.file = file;
        if (decision != nullptr) {
            trouble.log = decision->log;
            trouble.computer = decision->computer;
            trouble.own = decision->own;
        }
        return result_.troubles.emplace_back(std::move(trouble));
    }

    bool kept(const LoggedDecision& decision) const {
        const KeptRecord* record = reading_.keptOf(decision.record);
        return record != nullptr && record->kept;
    }

    bool counted(const std::string& file) const {
        return input_.replayed && input_.replayed->contains(file);
    }

    void judge(const ReadRecord& record) {
        const auto found = named_.find(record.name);
        if (found == named_.end()) return judgeUnlisted(record);
        Lines& lines = found->second;
        lines.present = true;
        if (const auto counting = lines.counting(record.hash)) {
            result_.asSealed += *counting;
            return;
        }
        const LoggedDecision& last = *lines.last;
        ProofTrouble& trouble = tell(Kind::recordAltered, record.name, &last);
        trouble.restorable = kept(last);
        trouble.counted = counted(record.name);
        const auto sealed = vault_.read(last.record, largestRecord);
        const auto now = readFile(input_.folders.outputs / record.name, largestRecord);
        if (sealed && now) trouble.differences = differences(*sealed, *now);
    }

    void judgeUnlisted(const ReadRecord& record) {
        if (input_.pending.contains(record.name)) return;
        const auto bytes = readFile(input_.folders.outputs / record.name, largestRecord);
        const auto rebuilt = bytes ? rebuildRecord(record.name, *bytes) : std::nullopt;
        const bool adoptable = rebuilt && rebuilt->totem.asOf <= input_.now;
        const std::string what = "record " + record.name;
        if (waiting_.stillArriving(what)) {
            ProofTrouble& trouble = tell(Kind::arriving, record.name, nullptr);
            trouble.since = waiting_.since(what);
            trouble.counted = counted(record.name);
            result_.countedUnlisted += trouble.counted ? 1 : 0;
            return;
        }
        const bool object = bytes && !rebuilt && parseJson(*bytes).value_or(Json()).is_object();
        if (!rebuilt && !object) {
            tell(Kind::recordUnreadable, record.name, nullptr).reason =
                bytes ? "it is not a record" : record.reason;
            return;
        }
        const bool earlier = adoptable && secondsSince1970(rebuilt->totem.asOf) < begun_;
        ProofTrouble& trouble =
            tell(earlier ? Kind::recordEarlier : Kind::recordUnlisted, record.name, nullptr);
        trouble.adoptable = adoptable;
        trouble.counted = counted(record.name);
        result_.countedUnlisted += trouble.counted ? 1 : 0;
    }

    void judgeGone(const LoggedDecision& last) {
        if (input_.pending.contains(last.file)) return;
        const std::string what = "line " + last.file;
        if (!last.own && waiting_.stillArriving(what)) {
            tell(Kind::arriving, last.file, &last).since = waiting_.since(what);
            return;
        }
        tell(Kind::recordGone, last.file, &last).restorable = kept(last);
    }

    void judgeEvidence(LoggedDecision& decision) {
        if (decision.evidence == Evidence::none) return;
        if (reading_.inVault(decision.evidenceRoot)) {
            decision.evidence = Evidence::kept;
            decision.reason.clear();
            return;
        }
        const bool promised =
            decision.evidence == Evidence::kept || supplied_.contains(decision.evidenceRoot);
        if (!promised) {
            // Of what was sealed before files were kept nobody needs to be told each time.
            if (decision.adopted || decision.withdrawn) return;
            ProofTrouble& trouble = tell(Kind::evidenceNotKept, decision.file, &decision);
            trouble.evidence = decision.evidenceRoot;
            trouble.reason = decision.reason;
            return;
        }
        const std::string what = "evidence " + decision.evidenceRoot;
        const bool arriving = !decision.own && waiting_.stillArriving(what);
        decision.evidence = arriving ? Evidence::arriving : Evidence::gone;
        ProofTrouble& trouble =
            tell(arriving ? Kind::arriving : Kind::evidenceGone, decision.file, &decision);
        trouble.evidence = decision.evidenceRoot;
        if (arriving) trouble.since = waiting_.since(what);
    }

    /// Closings of other computers that readiness was not replayed from.
    void judgeCounted() {
        if (!input_.replayed) return;
        std::map<std::string, std::pair<const LoggedDecision*, std::set<std::string>>> waiting;
        for (const LoggedDecision& decision : result_.decisions) {
            if (decision.own || decision.repeated || !decision.closes || counted(decision.file)) {
                continue;
            }
            auto& [first, files] = waiting[decision.log];
            first = &decision;
            files.insert(decision.file);
        }
        for (const auto& [log, entry] : waiting) {
            tell(Kind::notCountedYet, "", entry.first).count =
                static_cast<std::int64_t>(entry.second.size());
        }
    }

    const ProofInput& input_;
    const ProofReading& reading_;
    Waiting& waiting_;
    ProofComparison& result_;
    Vault vault_;
    std::unordered_map<std::string_view, Lines> named_;
    std::set<std::string> supplied_;
    std::int64_t begun_ = std::numeric_limits<std::int64_t>::max();
};

std::map<std::string, double> levelsIn(std::string_view graph) {
    std::map<std::string, double> levels;
    const auto document = parseJson(graph);
    if (!document || !document->is_object()) return levels;
    const auto nodes = document->find("nodes");
    if (nodes == document->end() || !nodes->is_array()) return levels;
    for (const Json& node : *nodes) {
        if (!node.is_object()) continue;
        const Json id = node.value("id", Json());
        const Json level = node.value("g", Json());
        if (id.is_string() && level.is_number())
            levels[id.get<std::string>()] = level.get<double>();
    }
    return levels;
}

} // namespace

void compareRecords(const ProofInput& input, const ProofReading& reading, Waiting& waiting,
                    ProofComparison& result) {
    Records(input, reading, waiting, result).compare();
}

std::vector<RaisedLevel> raisedLevels(const ProofFolders& folders, const std::string& graph,
                                      const std::vector<LoggedDecision>& decisions) {
    std::vector<RaisedLevel> raised;
    const auto kept = Vault(folders, "").read(graph, largestGraph);
    const auto now = readFile(folders.outputs / "soc2-mesh-bondgraph.json", largestGraph);
    if (!kept || !now) return raised;
    const auto before = levelsIn(*kept);
    for (const auto& each : levelsIn(*now)) {
        const std::string& criterion = each.first;
        const double level = each.second;
        const auto was = before.find(criterion);
        const double from = was == before.end() ? 0 : was->second;
        const bool closed =
            std::any_of(decisions.begin(), decisions.end(), [&](const LoggedDecision& decision) {
                return decision.closes && decision.criterion == criterion;
            });
        if (level > from && !closed) raised.push_back({criterion, from, level});
    }
    return raised;
}

} // namespace kelvo
