#pragma once

#include "base/Files.h"
#include "ledger/RecordFile.h"
#include "proof/ProofKeeper.h"
#include "proof/ProofWords.h"
#include "support/Fakes.h"
#include "support/TemporaryDirectory.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace kelvo::test {

/// What several computers share: one folder of records, the proof beside it, one clock.
struct Office {
    Office() {
        std::filesystem::create_directories(outputs());
        write(outputs() / "soc2-mesh-bondgraph.json", graph);
    }

    std::filesystem::path outputs() const { return directory.path() / "bondgraph" / "outputs"; }
    std::filesystem::path proof() const { return directory.path() / "bondgraph" / "proof"; }
    std::filesystem::path write(const std::filesystem::path& file, std::string_view bytes) const {
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }

    std::string graph = R"({"organisation":"Larkspur","nodes":[]})";
    TemporaryDirectory directory;
    FakeClock clock;
};

/// One computer with a project folder of its own, sealing as the engine does.
class Computer {
public:
    Computer(Office& office, const std::string& name)
        : office_(office), name_(name), project_(office.directory.path() / name) {
        std::filesystem::create_directories(project_);
        start();
    }

    /// A new run of the program.
    void start() {
        keeper.reset();
        keeper = std::make_unique<ProofKeeper>(
            ProofKeeper::Setup{folders(), name_, "id of " + name_, "1.0"}, office_.clock);
        keeper->runFiles(office_.graph, std::nullopt);
        keeper->readOwnLog();
        chain = TotemChain();
    }

    /// Seals a closing with a text as evidence, or an identity without any; answers its file.
    std::string close(const std::string& criterion, const std::string& evidence) {
        const StagedEvidence staged = keeper->vault().stage(evidence);
        return seal({{"sourceDb", "control"},
                     {"criterion", criterion},
                     {"gate_after", 1.0},
                     {"owner", "Ada"},
                     {"evidence_root", staged.root()},
                     {"evidence_name", "review.txt"}},
                    staged);
    }
    std::string identify() {
        return seal({{"kyc", "Ada"}, {"role", "Owner"}, {"tip", chain.tip()}}, std::nullopt);
    }
    std::string seal(const Json& payload, const std::optional<StagedEvidence>& evidence) {
        const std::string bytes = *writeJson(payload);
        const std::string asOf = iso8601(office_.clock.now());
        const Totem totem = chain.append(bytes, "t", "HIPR:TouchID:present", asOf);
        const RecordWriting writing = writeRecordFile(folders().outputs, totem, bytes, asOf);
        (void)keeper->keep({.account = "Ada Byron",
                            .file = writing.record->file,
                            .record = writing.record->bytes,
                            .block = totem.blockHash,
                            .payload = bytes,
                            .approval = {"Approve it", asOf, asOf},
                            .evidence = evidence,
                            .draft = std::nullopt});
        return writing.record->file;
    }

    ProofComparison compare() {
        ProofComparison found = compareProof(keeper->input(recordFileNames(office_.outputs())));
        keeper->take(found);
        return found;
    }
    /// The lines of trouble, or the sentence of a whole proof.
    std::string says() {
        const ProofComparison found = compare();
        const auto lines = troubleLines(found);
        if (lines.empty()) return wholeSentence(found);
        std::string all = lines.front();
        for (std::size_t i = 1; i < lines.size(); ++i)
            all += " " + lines[i];
        return all;
    }

    ProofFolders folders() const { return {office_.outputs(), project_}; }
    std::filesystem::path log() { return folders().log(compare().ownLog); }

    std::unique_ptr<ProofKeeper> keeper;
    TotemChain chain;

private:
    Office& office_;
    std::string name_;
    std::filesystem::path project_;
};

} // namespace kelvo::test
