// Definitions that are still to be written: they keep nothing and say so.

#include "base/Files.h"
#include "proof/ProofKeeper.h"
#include "proof/ProofWords.h"
#include "proof/SealLog.h"

namespace kelvo {

struct StagedEvidence::State {
    std::string root;
    std::uintmax_t size = 0;
    std::optional<std::string> notKept = "nothing is kept yet";
};
StagedEvidence::StagedEvidence(std::shared_ptr<State> state) : state_(std::move(state)) {
}
const std::string& StagedEvidence::root() const {
    return state_->root;
}
std::uintmax_t StagedEvidence::size() const {
    return state_->size;
}
const std::optional<std::string>& StagedEvidence::notKept() const {
    return state_->notKept;
}

Vault::Vault(ProofFolders folders, std::string_view logId)
    : folders_(std::move(folders)), prefix_("." + std::string(logId.substr(0, 8)) + "-") {
}
tl::expected<StagedEvidence, FileError>
Vault::stage(const std::filesystem::path& source,
             const std::function<void(std::size_t done, std::size_t size)>& progress) {
    auto state = std::make_shared<StagedEvidence::State>();
    Sha256Stream hash;
    const auto read = readFileInPieces(source, [&](std::string_view piece, std::size_t size) {
        hash.add(piece);
        state->size += piece.size();
        if (progress) progress(state->size, size);
        return true;
    });
    if (!read) return tl::unexpected(read.error());
    state->root = hex(hash.finish());
    return StagedEvidence(std::move(state));
}
StagedEvidence Vault::stage(std::string bytes) {
    auto state = std::make_shared<StagedEvidence::State>();
    state->root = sha256Hex(bytes);
    state->size = bytes.size();
    return StagedEvidence(std::move(state));
}

struct ProofKeeper::State {
    explicit State(ProofFolders folders) : vault(std::move(folders), "00000000") {}
    Vault vault;
};
ProofKeeper::ProofKeeper(Setup setup, const Clock&)
    : state_(std::make_unique<State>(std::move(setup.folders))) {
}
ProofKeeper::~ProofKeeper() = default;
Vault& ProofKeeper::vault() {
    return state_->vault;
}
void ProofKeeper::runFiles(std::optional<std::string>, std::optional<std::string>) {
}
void ProofKeeper::readOwnLog() {
}
std::optional<Unkept> ProofKeeper::keep(SealedDecision) {
    return {};
}
std::vector<Unkept> ProofKeeper::unkept() const {
    return {};
}
bool ProofKeeper::retry() {
    return false;
}
ProofInput ProofKeeper::input(std::optional<std::set<std::string>>) const {
    return {};
}
bool ProofKeeper::take(const ProofComparison&) {
    return true;
}
tl::expected<std::size_t, FileError> ProofKeeper::adopt(const std::vector<std::string>&,
                                                        const std::string&, const Approval&) {
    return 0;
}
tl::expected<void, FileError> ProofKeeper::supply(const StagedEvidence&, const std::string&,
                                                  const std::string&, const std::string&,
                                                  const Approval&) {
    return tl::unexpected(FileError{"not written yet"});
}
tl::expected<std::string, FileError> ProofKeeper::restore(const ProofComparison&,
                                                          const std::string&) {
    return tl::unexpected(FileError{"not written yet"});
}
tl::expected<void, FileError> ProofKeeper::restoreStatement(const LoggedDecision&) {
    return tl::unexpected(FileError{"not written yet"});
}
tl::expected<StoredCheckpoint, FileError> ProofKeeper::makeCheckpoint(const ProofComparison&) {
    return tl::unexpected(FileError{"not written yet"});
}

std::string machineId() {
    return {};
}
std::string hostName() {
    return {};
}
ProofComparison compareProof(const ProofInput&) {
    return {};
}
CheckpointCheck checkCheckpoint(const Checkpoint&, const ProofComparison&) {
    return {};
}
const ComparedLog* ProofComparison::log(std::string_view) const {
    return nullptr;
}
bool ProofTrouble::needsLook() const {
    return kind < Kind::copyHarmless;
}
bool CheckpointCheck::holds() const {
    return false;
}
std::string wholeSentence(const ProofComparison&) {
    return {};
}
std::vector<std::string> readinessRemarks(const ProofComparison&) {
    return {};
}
std::vector<std::string> troubleLines(const ProofComparison&) {
    return {};
}
std::string logName(std::string_view computer, std::string_view) {
    return std::string(computer);
}
std::string dayInWords(std::string_view moment, std::string_view) {
    return std::string(moment);
}
std::string adoptSentence(std::size_t records) {
    return "Adopt " + std::to_string(records) +
           (records == 1 ? " earlier record" : " earlier records") +
           " into the log — verify to keep";
}
std::string supplySentence(std::string_view name) {
    return "Supply the evidence " + std::string(name) + " — verify to keep";
}
tl::expected<Checkpoint, std::string> parseCheckpoint(std::string_view) {
    return tl::unexpected(std::string("not written yet"));
}
std::string checkpointText(const Checkpoint&) {
    return {};
}
CheckpointMail checkpointMail(const Checkpoint&) {
    return {};
}
std::vector<std::string> groupsOfEight(std::string_view) {
    return {};
}
std::int64_t Checkpoint::lines() const {
    return 0;
}

} // namespace kelvo
