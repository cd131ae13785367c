#include "proof/Package.h"

#include "base/Text.h"
#include "proof/LineParser.h"
#include "proof/PackageCards.h"
#include "proof/ProofWords.h"
#include "proof/RecordRebuild.h"
#include "proof/SealLog.h"
#include "proof/Sheets.h"
#include "proof/Vault.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <set>
#include <utility>

namespace kelvo {
namespace fs = std::filesystem;
namespace {

using Kind = ProofTrouble::Kind;
using Evidence = LoggedDecision::Evidence;
using Done = tl::expected<void, FileError>;

std::string sixDigits(std::int64_t number) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%06lld", static_cast<long long>(number));
    return text.data();
}

std::string shownName(const std::string& name) {
    return withControlsShown(toValidUtf8(name));
}

bool needed(const LoggedDecision& decision) {
    return decision.closes && !decision.withdrawn && !decision.repeated;
}

std::optional<std::string> logRefusal(const ProofTrouble& trouble) {
    const std::string log = " log of " + logName(trouble.computer, trouble.log);
    switch (trouble.kind) {
    case Kind::logDamaged:
        return "Line " + std::to_string(trouble.line) + " of the" + log + " is damaged.";
    case Kind::ownLogLeft:
        return "This computer's log was continued elsewhere.";
    case Kind::logGone:
        return "The" + log + " is gone.";
    case Kind::logRewritten:
        return "The" + log + " no longer begins as it did.";
    case Kind::logShorter:
        return "The" + log + " is shorter than it was.";
    case Kind::copiesDisagree:
        return "Two copies of the" + log + " disagree.";
    case Kind::recordGone:
    case Kind::recordAltered:
    case Kind::recordUnlisted:
    case Kind::recordEarlier:
    case Kind::recordUnreadable:
    case Kind::evidenceGone:
    case Kind::evidenceNotKept:
    case Kind::graphChanged:
    case Kind::clockAhead:
    case Kind::foreignLog:
    case Kind::notCountedYet:
    case Kind::copyHarmless:
    case Kind::arriving:
        break;
    }
    return std::nullopt;
}

class Packing {
public:
    Packing(PackageRequest request, Bag bag)
        : request_(std::move(request)), bag_(std::move(bag)), vault_(request_.folders, "") {
        content_.comparison = std::move(request_.comparison);
        content_.checkpoint = std::move(request_.checkpoint);
        content_.warnings = std::move(request_.warnings);
    }

    tl::expected<PackageWritten, FileError> pack() {
        for (const auto step :
             {&Packing::logs, &Packing::checkpoints, &Packing::records, &Packing::evidence,
              &Packing::documents, &Packing::graphs, &Packing::sheets, &Packing::tags}) {
            if (const Done done = (this->*step)(); !done) return tl::unexpected(done.error());
        }
        auto number = bag_.finish();
        if (!number) return tl::unexpected(number.error());
        return PackageWritten{bag_.folder(), std::move(*number)};
    }

private:
    const std::vector<LoggedDecision>& decisions() const { return content_.comparison.decisions; }

    /// Something is not as it was sealed: an error, or a warning where the person wants it anyway.
    Done lacking(const std::string& sentence) {
        if (!request_.anyway) return tl::unexpected(FileError{sentence});
        content_.warnings.push_back(sentence);
        return {};
    }

    /// Copies the file of that hash. False where it is not there or another.
    tl::expected<bool, FileError> copyKept(const std::string& path, const fs::path& source,
                                           const std::string& hash) {
        const auto copied = bag_.copy("data/" + path, source);
        if (copied && *copied == hash) return true;
        if (!copied && copied.error().code != ENOENT) return tl::unexpected(copied.error());
        bag_.remove("data/" + path);
        return false;
    }

    Done logs() {
        SealLogReader reader;
        for (const CheckpointBlock& block : content_.checkpoint.blocks) {
            const fs::path source = request_.folders.log(block.log);
            const auto copied =
                bag_.copyLines("data/logs/" + source.filename().native(), source, block.lines);
            if (!copied) return tl::unexpected(copied.error());
            if (*copied != block.sha256) {
                return tl::unexpected(FileError{"The log of " + block.log.substr(0, 8) +
                                                " changed while it was packed."});
            }
            const bool own = block.log == content_.comparison.ownLog;
            const auto read = reader.read(source, [&](const SealLineView& line) {
                const auto* run = std::get_if<RunLine>(&line.fact);
                if (run == nullptr || line.seq >= block.lines) return;
                versions_.emplace(run->graph, "soc2-mesh.json");
                versions_.emplace(run->roles, "roles.json");
                if (own) lastRun_ = *run;
            });
            if (!read) return tl::unexpected(read.error());
        }
        return {};
    }

    Done checkpoints() {
        const std::string text = checkpointText(content_.checkpoint);
        if (auto done = bag_.add("data/checkpoint.txt", text); !done) return done;
        for (const StoredCheckpoint& stored : content_.comparison.checkpoints) {
            const bool ours = std::any_of(
                stored.checkpoint.blocks.begin(), stored.checkpoint.blocks.end(),
                [&](const auto& each) { return content_.checkpoint.blockOf(each.log) != nullptr; });
            if (!ours || stored.checkpoint == content_.checkpoint) continue;
            const auto copied = bag_.copy("data/earlier-checkpoints/" + stored.fileName,
                                          request_.folders.checkpoints() / stored.fileName);
            if (!copied) return tl::unexpected(copied.error());
        }
        return {};
    }

    Done records() {
        LineParser parser;
        for (const LoggedDecision& each : decisions()) {
            PackedRecord packed;
            const std::string path = "records/" + each.log.substr(0, 8) + "/" +
                                     sixDigits(each.line - 1) + "-" + bagName(each.file);
            auto bytes = vault_.read(each.record, largestRecord);
            if (!bytes) {
                // What the vault has lost may still lie in the outputs folder.
                bytes = readFile(request_.folders.outputs / each.file, largestRecord);
                if (bytes && sha256Hex(*bytes) != each.record) bytes = tl::unexpected(FileError{});
            }
            if (bytes) {
                if (auto done = bag_.add("data/" + path, *bytes); !done) return done;
                packed.path = path;
                packed.firedBy = parser.payloadFacts(*bytes).firedBy;
            } else if (auto done = lacking("The record " + shownName(each.file) + " of " +
                                           logName(each.computer, each.log) + " is not here.");
                       !done) {
                return done;
            }
            content_.records.push_back(std::move(packed));
        }
        return {};
    }

    Done evidence() {
        std::map<std::string, std::size_t> places;
        for (std::size_t i = 0; i < decisions().size(); ++i) {
            const LoggedDecision& each = decisions()[i];
            if (!each.closes || each.repeated) continue;
            const auto place = places.emplace(each.evidenceRoot, content_.evidence.size());
            if (place.second)
                content_.evidence.push_back(
                    {.root = each.evidenceRoot, .path = {}, .decisions = {}});
            content_.evidence[place.first->second].decisions.push_back(i);
        }
        std::set<std::string, std::less<>> altered;
        for (PackedEvidence& each : content_.evidence) {
            const LoggedDecision& first = decisions()[each.decisions.front()];
            const std::string path =
                "evidence/" + each.root.substr(0, 16) + "-" + bagName(first.evidenceName);
            tl::expected<bool, FileError> copied = false;
            if (isHash(each.root)) copied = copyKept(path, vault_.path(each.root), each.root);
            if (!copied) return tl::unexpected(copied.error());
            if (*copied) {
                each.path = path;
                each.bytes = vault_.sizeOf(each.root).value_or(0);
                continue;
            }
            altered.insert(each.root);
            const bool promised =
                std::any_of(each.decisions.begin(), each.decisions.end(), [&](std::size_t place) {
                    return needed(decisions()[place]) &&
                           decisions()[place].evidence != Evidence::notKept;
                });
            if (!promised) continue;
            if (auto done = lacking("The kept evidence " + shownName(first.evidenceName) +
                                    " is not the one that was sealed.");
                !done) {
                return done;
            }
        }
        ProofStanding& standing = content_.comparison.standing;
        standing = standingOf(std::move(standing.criteria), decisions(), dayOfPackage(), altered);
        return {};
    }

    Day dayOfPackage() const {
        const auto at = parseIso8601(content_.checkpoint.at());
        return at ? std::chrono::floor<std::chrono::days>(*at) : Day();
    }

    Done documents() {
        for (const auto& [kind, decision] : reportDocuments(decisions())) {
            const auto& document = std::get<ReportDocument>(*decision->further);
            const std::string path =
                "documents/" + std::string(nameOf(kind)) + "-" + bagName(document.name);
            const auto copied = copyKept(path, vault_.path(document.root), document.root);
            if (!copied) return tl::unexpected(copied.error());
            if (*copied) continue;
            if (auto done = lacking("The document " + shownName(document.name) + " is not here.");
                !done) {
                return done;
            }
        }
        return {};
    }

    Done graphs() {
        for (const auto& [hash, name] : versions_) {
            if (hash.empty()) continue;
            const std::string path = "graph/versions/" + hash.substr(0, 16) + "-" + name;
            const auto copied = copyKept(path, vault_.path(hash), hash);
            if (!copied) return tl::unexpected(copied.error());
        }
        const std::array<std::pair<std::string, std::string>, 2> current = {{
            {lastRun_.graph, "graph/soc2-mesh-bondgraph.json"},
            {lastRun_.roles, "graph/roles-bondgraph.json"},
        }};
        for (const auto& [hash, path] : current) {
            if (hash.empty()) continue;
            const auto copied = copyKept(path, vault_.path(hash), hash);
            if (!copied) return tl::unexpected(copied.error());
            if (*copied) continue;
            if (auto done = lacking("The file " + path + " of the last run is not here."); !done)
                return done;
        }
        return {};
    }

    Done sheets() {
        const std::array<std::pair<const char*, std::string>, 4> files = {{
            {"data/readiness.csv", readinessSheet(content_)},
            {"data/evidence.csv", evidenceSheet(content_)},
            {"data/decisions.csv", decisionsSheet(content_)},
            {"data/summary.json", packageSummary(content_)},
        }};
        for (const auto& [path, bytes] : files) {
            if (auto done = bag_.add(path, bytes); !done) return done;
        }
        return {};
    }

    Done tags() {
        const CheckpointBlock& own = content_.checkpoint.blocks.front();
        // A tag file's lines end where an organisation's name must not.
        const std::string organisation =
            shownName(content_.comparison.standing.criteria.organisation);
        const std::string info =
            "Source-Organization: " + organisation +
            "\nBagging-Date: " + content_.checkpoint.at().substr(0, 10) +
            "\nBag-Software-Agent: Kelvo SOC2 Engine " + request_.program +
            "\nExternal-Identifier: " + own.log + "/" + std::to_string(own.lines) +
            "\nExternal-Description: SOC 2 audit package\nPayload-Oxum: " +
            std::to_string(bag_.payloadBytes()) + "." + std::to_string(bag_.payloadFiles()) + "\n";
        if (auto done = bag_.add("bag-info.txt", info); !done) return done;
        for (const PackageCard& card : packageCards) {
            if (auto done = bag_.add(std::string(card.name), card.text); !done) return done;
        }
        return bag_.add("bagit.txt", "BagIt-Version: 1.0\nTag-File-Character-Encoding: UTF-8\n");
    }

    PackageRequest request_;
    Bag bag_;
    Vault vault_;
    PackageContent content_;
    std::set<std::pair<std::string, std::string>> versions_; ///< of graph and role files
    RunLine lastRun_;                                        ///< of the own log
};

} // namespace

std::vector<std::string> packageRefusals(const ProofFolders& folders,
                                         const ProofComparison& comparison) {
    std::vector<std::string> refusals;
    if (!comparison.standing.set) refusals.emplace_back("No audit period is set.");
    for (const ProofTrouble& trouble : comparison.troubles) {
        if (auto sentence = logRefusal(trouble)) refusals.push_back(std::move(*sentence));
    }
    const Vault vault(folders, "");
    for (const LoggedDecision& each : comparison.decisions) {
        const std::string where = " of " + logName(each.computer, each.log) + ", line " +
                                  std::to_string(each.line) + ", is not here.";
        if (!vault.sizeOf(each.record)) {
            const auto bytes = readFile(folders.outputs / each.file, largestRecord);
            if (!bytes || sha256Hex(*bytes) != each.record)
                refusals.push_back("The record " + shownName(each.file) + where);
        }
        if (needed(each) &&
            (each.evidence == Evidence::gone || each.evidence == Evidence::arriving))
            refusals.push_back("The evidence " + shownName(each.evidenceName) + where);
    }
    return refusals;
}

std::string packageName(const Checkpoint& checkpoint) {
    if (checkpoint.blocks.empty()) return {};
    const CheckpointBlock& own = checkpoint.blocks.front();
    std::string day = own.at.substr(0, 10);
    std::erase(day, '-');
    return "kelvo-audit-" + own.log.substr(0, 8) + "-" + sixDigits(own.lines) + "-" + day;
}

tl::expected<PackageWritten, FileError> writePackage(PackageRequest request,
                                                     const Bag::Progress& progress) {
    if (request.checkpoint.blocks.empty() ||
        request.checkpoint.blocks.front().log != request.comparison.ownLog) {
        return tl::unexpected(FileError{"nothing is sealed yet"});
    }
    if (!request.comparison.standing.set) {
        return tl::unexpected(FileError{"No audit period is set."});
    }
    auto bag = Bag::begin(request.destination, packageName(request.checkpoint), progress);
    if (!bag) return tl::unexpected(bag.error());
    return Packing(std::move(request), std::move(*bag)).pack();
}

} // namespace kelvo
