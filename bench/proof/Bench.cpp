// What the proof costs, each as a ratio to a baseline that is measured in the same run: a table on
// standard output. Medians of several rounds in which baseline and candidate take turns. The folder
// is on the file system of TMPDIR; seals wait for its disk, comparisons find it in the cache.

#include "proof/Office.h"

#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace kelvo;

double clockSeconds(clockid_t which) {
    timespec time{};
    ::clock_gettime(which, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double secondsOf(clockid_t which, const std::function<void()>& work) {
    const double begin = clockSeconds(which);
    work();
    return clockSeconds(which) - begin;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void row(const char* what, const std::vector<double>& baseline,
         const std::vector<double>& candidate) {
    const double before = median(baseline);
    const double after = median(candidate);
    std::printf("| %-66s | %10.2f | %10.2f | %5.2f |\n", what, before * 1e3, after * 1e3,
                after / before);
}

void demand(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "bench_proof: %s\n", what);
    std::exit(1);
}

/// One seal with a file of 10 MiB as its evidence: hashed and sealed, and kept as well.
void seals() {
    test::Office office;
    test::Computer ada(office, "larkspur-01");
    const auto file =
        office.write(office.directory.path() / "evidence", std::string(10 << 20, 'e'));
    std::vector<double> bare;
    std::vector<double> kept;
    TotemChain chain;
    for (int round = 0; round < 15; ++round) {
        // Other bytes each time: what is in the vault already would not be copied again.
        std::fstream(file, std::ios::in | std::ios::out) << round;
        bare.push_back(secondsOf(CLOCK_MONOTONIC, [&] {
            Sha256Stream hash;
            const auto read = readFileInPieces(file, [&](std::string_view piece, std::size_t) {
                hash.add(piece);
                return true;
            });
            demand(read.has_value(), "the evidence cannot be read");
            const std::string payload =
                *writeJson({{"sourceDb", "bare"}, {"evidence_root", hex(hash.finish())}});
            writeRecordFile(office.outputs(), chain.append(payload, "t", "p", "x"), payload, "x");
        }));
        kept.push_back(secondsOf(CLOCK_MONOTONIC, [&] {
            const StagedEvidence staged = ada.keeper->vault().stage(file).value();
            ada.seal({{"sourceDb", "control"}, {"evidence_root", staged.root()}}, staged);
        }));
        demand(ada.keeper->unkept().empty(), "a decision was not kept");
    }
    row("a seal with evidence of 10 MiB, to the same without log and vault", bare, kept);
}

/// 10,000 decisions: logs, records and vault compared, to reading and hashing the same files.
void comparison() {
    constexpr int decisions = 10'000;
    test::Office office;
    {
        test::Computer ada(office, "larkspur-01");
        for (int i = 0; i < decisions; ++i)
            ada.close("C" + std::to_string(i % 300), "evidence " + std::to_string(i));
        demand(ada.keeper->unkept().empty(), "a decision was not kept");
    }
    test::Computer ada(office, "larkspur-01");
    const ProofInput input = ada.keeper->input(recordFileNames(office.outputs()));
    std::vector<std::filesystem::path> files = {ada.log()};
    for (const std::string& name : recordFileNames(office.outputs()))
        files.push_back(office.outputs() / name);
    for (const LoggedDecision& each : ada.compare().decisions)
        files.push_back(ada.keeper->vault().path(each.record));
    std::vector<double> bare;
    std::vector<double> compared;
    for (int round = 0; round < 7; ++round) {
        bare.push_back(secondsOf(CLOCK_THREAD_CPUTIME_ID, [&] {
            unsigned sum = 0;
            for (const auto& file : files)
                sum += static_cast<unsigned>(sha256(*readFile(file))[0]);
            demand(sum != 0, "nothing was hashed");
        }));
        compared.push_back(secondsOf(CLOCK_THREAD_CPUTIME_ID, [&] {
            const ProofComparison found = compareProof(input);
            demand(found.counted == decisions && found.troubles.empty(), "the proof is not whole");
        }));
    }
    row("comparison of 10,000 decisions, to reading and hashing these files", bare, compared);
}

} // namespace

int main() {
    std::printf("| %-66s | %10s | %10s | ratio |\n", "what", "baseline ms", "ours ms");
    std::printf("|---|---|---|---|\n");
    seals();
    comparison();
    return 0;
}
