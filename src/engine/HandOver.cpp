#include "base/Text.h"
#include "engine/EngineVM.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace kelvo {

/// What the writing and the engine's thread tell one another.
struct EngineVM::PackageWork {
    std::atomic<bool> stop{false};
    std::atomic<std::uintmax_t> done{0};
    std::atomic<std::uintmax_t> whole{0};
};

namespace {

std::uintmax_t bytesOfEvidence(const ProofComparison& comparison, const Vault& vault) {
    std::set<std::string_view> roots;
    std::uintmax_t sum = 0;
    for (const LoggedDecision& each : comparison.decisions) {
        if (roots.insert(each.evidenceRoot).second) {
            sum += vault.sizeOf(each.evidenceRoot).value_or(0);
        }
    }
    return sum;
}

} // namespace

void EngineVM::showPackage(PackageState::Stage stage, std::vector<std::string> reasons) {
    PackageState state = package->value_or(PackageState());
    state.stage = stage;
    state.reasons = std::move(reasons);
    package.set(std::move(state));
}

void EngineVM::handOverNow(const Turn&, const std::string& recipient,
                           const std::filesystem::path& destination, bool anyway) {
    if (!mayDecide())
        return refuse("Only the owner hands over — nothing was changed.", "handover_refused");
    if (trimmed(recipient).empty())
        return refuse("The package is for nobody yet — nothing was changed.", "handover_refused");
    if (packageWork_) return refuse("A package is being written already.", "handover_refused");
    packageWork_ = std::make_shared<PackageWork>();
    package.set(PackageState{.recipient = recipient, .destination = destination});
    const auto input = std::make_shared<const ProofInput>(keeper_->input(std::nullopt));
    const auto read = std::make_shared<ProofComparison>();
    ports_.background.run(
        [input, read] { *read = ::kelvo::compareProof(*input); },
        [this, read, anyway, resume = resumption()] {
            resume([this, read, anyway](const Turn& turn) { askHandOver(turn, *read, anyway); });
        });
}

void EngineVM::askHandOver(const Turn& turn, const ProofComparison& read, bool anyway) {
    std::vector<std::string> reasons = packageRefusals(keeper_->folders(), read);
    if (!reasons.empty() && (!anyway || !read.standing.set)) {
        packageWork_.reset();
        refuse("Nothing was handed over: " + reasons.front(), "handover_refused",
               {{"error", reasons.front()}});
        return showPackage(PackageState::Stage::refused, std::move(reasons));
    }
    const Exclusive exclusive(turn);
    HandOver seal{.recipient = (*package)->recipient, .logs = {}};
    for (const ComparedLog& log : read.logs) {
        if (log.belongs && log.end.lines > 0) seal.logs.push_back({log.id, log.end});
    }
    if (!sealFurther(exclusive, seal)) {
        packageWork_.reset();
        return package.set(std::nullopt);
    }
    showPackage(PackageState::Stage::writing);
    writeHandOver(seal.logs, std::move(reasons), anyway);
}

void EngineVM::writeHandOver(const std::vector<HandedLog>& logs, std::vector<std::string> warnings,
                             bool anyway) {
    using Outcome = tl::expected<PackageWritten, FileError>;
    const auto outcome = std::make_shared<Outcome>(tl::unexpected(FileError{}));
    const auto input = std::make_shared<ProofInput>(keeper_->input(std::nullopt));
    // What other logs get from now on is not in it.
    for (const HandedLog& each : logs)
        input->until[each.log] = each.at.lines;
    PackageRequest request{.folders = keeper_->folders(),
                           .comparison = {},
                           .checkpoint = {},
                           .destination = (*package)->destination,
                           .program = KELVO_VERSION,
                           .warnings = std::move(warnings),
                           .anyway = anyway};
    ports_.background.run(
        [keeper = keeper_, input, outcome, work = packageWork_, request = std::move(request),
         account = ports_.account.fullName()]() mutable {
            request.comparison = ::kelvo::compareProof(*input);
            const ComparedLog* own = request.comparison.log(request.comparison.ownLog);
            const auto before = input->until.find(request.comparison.ownLog);
            const std::int64_t handed = before == input->until.end() ? 0 : before->second;
            if (own == nullptr || own->end.lines <= handed) {
                *outcome = tl::unexpected(FileError{"the hand-over is not in the log yet"});
                return;
            }
            const auto made = keeper->makeCheckpoint(request.comparison);
            if (!made) {
                *outcome = tl::unexpected(made.error());
                return;
            }
            request.checkpoint = made->checkpoint;
            work->whole = bytesOfEvidence(request.comparison, keeper->vault());
            *outcome =
                writePackage(std::move(request), [&work](std::string_view, std::uintmax_t bytes) {
                    work->done += bytes;
                    return !work->stop;
                });
            if (!*outcome) return;
            const auto told =
                keeper->packaged((*outcome)->folder.filename(), (*outcome)->number, account);
            // The package is written and whole; that the log does not tell of it is seen there.
            (void)told;
        },
        [this, outcome, resume = resumption()] {
            resume([this, outcome] { endHandOver(*outcome); });
        });
}

void EngineVM::endHandOver(const tl::expected<PackageWritten, FileError>& outcome) {
    packageWork_.reset();
    if (!outcome) {
        refuse("The package could not be written: " + outcome.error().description, "package_failed",
               {{"error", outcome.error().description}});
        return showPackage(PackageState::Stage::failed, {outcome.error().description});
    }
    PackageState state = package->value_or(PackageState());
    state.stage = PackageState::Stage::written;
    state.folder = outcome->folder;
    state.number = outcome->number;
    const std::string name = outcome->folder.filename();
    status.set("Handed over to " + state.recipient + ": " + name + ".");
    package.set(std::move(state));
    log_.e("package_written", {{"name", name}, {"number", outcome->number}});
    compareProof();
}

double EngineVM::packageShare() const {
    if (!packageWork_ || packageWork_->whole == 0) return 0;
    const double share =
        static_cast<double>(packageWork_->done) / static_cast<double>(packageWork_->whole);
    return std::min(share, 1.0);
}

void EngineVM::stopPackage() {
    if (packageWork_) packageWork_->stop = true;
}

} // namespace kelvo
