/// The start-up replay against merely listing and reading the same record files in the same run,
/// and how both grow. Processor time, the fastest of interleaved rounds: what else the machine does
/// only ever adds to it.

#include "compliance/ClosureReplay.h"
#include "compliance/ControlClosure.h"

#include <dirent.h>
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace kelvo {
namespace {

constexpr int criteria = 13;

/// A record file as the engine writes it, of about 800 bytes.
std::string recordText(int index) {
    Json record = controlPayload({
        .criterion = "CC-" + std::to_string(index % criteria),
        .gateBefore = 0.25,
        .owner = "Ada Byron",
        .readinessBefore = 0.5,
        .readinessAfter = 0.625,
        .attestedAt = "2026-01-31T09:15:02Z",
        .presence = "HIPR-OK fingerprint 2026-01-31T09:15:02Z",
        .tip = std::string(64, 'a'),
        .evidenceRoot = std::string(64, 'b'),
        .evidenceName = "access-review-2026-q1.md",
    });
    record.update(Json{{"title", "Closed"},
                       {"asOf", "2026-01-31T09:15:02Z"},
                       {"firedBy", "HIPR-OK fingerprint"},
                       {"appBlockHash", std::string(64, 'c')},
                       {"appIndex", index},
                       {"payloadRoot", std::string(64, 'd')},
                       {"appPrev", std::string(64, 'e')}});
    return writeJson(record, JsonLayout::pretty).value_or("");
}

class RecordFolder {
public:
    explicit RecordFolder(int count) {
        std::string name = (std::filesystem::temp_directory_path() / "kelvo-bench-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) std::abort();
        path_ = name;
        for (int i = 0; i < count; ++i) {
            std::ofstream(path_ / ("control-" + std::to_string(i) + "-aaaaaaaaaaaa.totem.json"))
                << recordText(i);
        }
    }
    ~RecordFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    RecordFolder(const RecordFolder&) = delete;
    RecordFolder& operator=(const RecordFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// The baseline: every file opened, read to its end and closed. Gives the number of bytes.
std::size_t listAndRead(const std::filesystem::path& path) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path.c_str()), ::closedir);
    std::vector<char> buffer(1 << 16);
    std::size_t total = 0;
    while (const dirent* entry = ::readdir(folder.get())) {
        if (entry->d_type != DT_REG) continue;
        const int file = ::openat(::dirfd(folder.get()), entry->d_name, O_RDONLY | O_CLOEXEC);
        ssize_t got = 0;
        while ((got = ::read(file, buffer.data(), buffer.size())) > 0)
            total += static_cast<std::size_t>(got);
        ::close(file);
    }
    return total;
}

double processorSeconds() {
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

struct Times {
    double reading = std::numeric_limits<double>::infinity();
    double replay = std::numeric_limits<double>::infinity();
    double complete = std::numeric_limits<double>::infinity();
};

template <class Work>
void keepFastest(double& fastest, Work work) {
    const double start = processorSeconds();
    work();
    fastest = std::min(fastest, processorSeconds() - start);
}

Times measure(int count, int rounds) {
    const RecordFolder folder(count);
    CriterionIds sealed;
    for (int i = 0; i < criteria; ++i)
        sealed.insert("CC-" + std::to_string(i));
    CriterionIds withOneOpen = sealed;
    withOneOpen.insert("CC-open"); // so that every file has to be read
    Times times;
    for (int round = 0; round < rounds; ++round) {
        keepFastest(times.reading, [&] {
            if (listAndRead(folder.path()) == 0) std::abort();
        });
        keepFastest(times.replay, [&] {
            if (sealedClosures(folder.path(), withOneOpen) != sealed) std::abort();
        });
        keepFastest(times.complete, [&] {
            if (sealedClosures(folder.path(), sealed) != sealed) std::abort();
        });
    }
    return times;
}

} // namespace
} // namespace kelvo

int main() {
    constexpr std::array counts = {1'000, 10'000, 100'000};
    std::array<kelvo::Times, counts.size()> times;
    std::printf("| records | list and read | replay | ratio | replay, all criteria closed |\n");
    std::printf("| ---: | ---: | ---: | ---: | ---: |\n");
    for (std::size_t i = 0; i < counts.size(); ++i) {
        times[i] = kelvo::measure(counts[i], 15);
        std::printf("| %d | %.2f ms | %.2f ms | %.2f | %.3f ms |\n", counts[i],
                    times[i].reading * 1e3, times[i].replay * 1e3,
                    times[i].replay / times[i].reading, times[i].complete * 1e3);
        std::fflush(stdout);
    }
    const auto exponent = [&](double kelvo::Times::*member) {
        return std::log10(times[2].*member / times[1].*member);
    };
    std::printf("\nGrowth from 10,000 to 100,000 records: reading n^%.2f, replay n^%.2f\n",
                exponent(&kelvo::Times::reading), exponent(&kelvo::Times::replay));
}
