// Definitions that are still to be written: they keep nothing and say so.

#include "proof/ProofKeeper.h"

namespace kelvo {

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

} // namespace kelvo
