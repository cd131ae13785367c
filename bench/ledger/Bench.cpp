// The ledger's costs, each as a ratio to a baseline that is measured in the same run: a table on
// standard output. Medians of the processor time of several rounds, in which baseline and candidate
// take turns.

#include "base/Json.h"
#include "base/Time.h"
#include "ledger/Log.h"
#include "ledger/TotemChain.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kelvo::TotemChain;

/// Of this thread on a processor, in the program and in the system: what others do at the same time
/// does not count. The file system's cache takes the log's lines, so that no disk is waited for.
double processorSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double secondsOf(const std::function<void()>& work) {
    const double begin = processorSeconds();
    work();
    return processorSeconds() - begin;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void row(const char* what, double baseline, double candidate, const char* unit, double scale) {
    std::printf("| %-62s | %12.2f | %12.2f | %-13s | %5.2f |\n", what, baseline * scale,
                candidate * scale, unit, candidate / baseline);
}

void demand(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "bench_ledger: %s\n", what);
    std::exit(1);
}

void appendTo(TotemChain& chain) {
    chain.append("{\"n\":1}", "collapse@t=1.230", "HIPR:TouchID:present", "2026-01-31T09:15:02Z");
}

void fill(TotemChain& chain, std::size_t count) {
    while (chain.blocks().size() < count)
        appendTo(chain);
}

/// The preimages one after the other, as a program would hash them that has them all at hand.
struct Preimages {
    explicit Preimages(const TotemChain& chain) {
        for (const kelvo::Totem& block : chain.blocks()) {
            text += std::to_string(block.index);
            ((((text += TotemChain::sep) += block.prev) += TotemChain::sep) += block.payloadRoot);
            ends.push_back(text.size());
        }
    }
    std::string text;
    std::vector<std::size_t> ends;
};

void verifyMillion(const TotemChain& chain) {
    const Preimages preimages(chain);
    EVP_MD* const algorithm = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    std::vector<double> bare;
    std::vector<double> verify;
    unsigned sum = 0;
    for (int round = 0; round < 7; ++round) {
        bare.push_back(secondsOf([&] {
            unsigned char digest[32];
            std::size_t begin = 0;
            for (const std::size_t end : preimages.ends) {
                EVP_Digest(preimages.text.data() + begin, end - begin, digest, nullptr, algorithm,
                           nullptr);
                sum += digest[0];
                begin = end;
            }
        }));
        verify.push_back(secondsOf([&] { demand(chain.verify(), "the chain does not verify"); }));
    }
    demand(sum != 0, "nothing was hashed");
    EVP_MD_free(algorithm);
    row("verify of 1,000,000 totems, to libcrypto on their preimages", median(bare), median(verify),
        "ms", 1e3);
}

/// Appends to many small chains and to one that is long already. Refreshing the published view is
/// taking the address and the length of the blocks.
void append(TotemChain& million) {
    constexpr int chains = 2000;
    std::vector<double> atTen;
    std::vector<double> atMillion;
    const kelvo::Totem* newest = nullptr;
    for (int round = 0; round < 7; ++round) {
        std::vector<std::unique_ptr<TotemChain>> small;
        for (int i = 0; i < chains; ++i) {
            small.push_back(std::make_unique<TotemChain>());
            fill(*small.back(), 10);
        }
        const auto appendAndPublish = [&newest](TotemChain& chain) {
            appendTo(chain);
            newest = &chain.blocks()[chain.blocks().size() - 1];
        };
        atTen.push_back(secondsOf([&] {
            for (const auto& chain : small)
                appendAndPublish(*chain);
        }));
        atMillion.push_back(secondsOf([&] {
            for (int i = 0; i < chains; ++i)
                appendAndPublish(million);
        }));
        demand(newest == &million.blocks().back(), "the view does not begin with the newest");
    }
    row("append and newest-first view at 1,000,000 totems, to 10 totems", median(atTen),
        median(atMillion), "us an append", 1e6 / chains);
}

class WallClock : public kelvo::Clock {
public:
    kelvo::TimePoint now() const override { return std::chrono::system_clock::now(); }
};

void eventLines() {
    constexpr int lines = 20'000;
    std::string name = (std::filesystem::temp_directory_path() / "kelvo-bench-XXXXXX").string();
    demand(::mkdtemp(name.data()) != nullptr, "no folder for the log");
    const std::filesystem::path folder = name;
    const WallClock clock;
    const kelvo::Log log(folder / "log", clock);
    const std::string bareFile = folder / "bare";
    const std::string line =
        "{\"kind\":\"pause\",\"risk\":0.25,\"t\":1.5,\"ts\":\"2026-01-31T09:15:02Z\"}\n";
    std::vector<double> bare;
    std::vector<double> events;
    for (int round = 0; round < 5; ++round) {
        bare.push_back(secondsOf([&] {
            for (int i = 0; i < lines; ++i) {
                const int file =
                    ::open(bareFile.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
                demand(::write(file, line.data(), line.size()) > 0, "the bare loop cannot write");
                ::close(file);
            }
        }));
        events.push_back(secondsOf([&] {
            for (int i = 0; i < lines; ++i)
                log.e("pause", {{"t", 1.5}, {"risk", 0.25}});
        }));
    }
    demand(std::filesystem::file_size(bareFile) == std::filesystem::file_size(log.path()),
           "the log does not hold every line");
    std::filesystem::remove_all(folder);
    row("one event line, to a bare open, append and close", median(bare), median(events),
        "us a line", 1e6 / lines);
}

} // namespace

int main() {
    std::printf("| %-62s | %12s | %12s | %-13s | ratio |\n", "what", "baseline", "ours", "unit");
    std::printf("|---|---|---|---|---|\n");
    TotemChain chain;
    fill(chain, 1'000'000);
    verifyMillion(chain);
    append(chain);
    eventLines();
    return 0;
}
