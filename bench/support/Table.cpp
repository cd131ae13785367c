#include "Table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace kelvo::bench {

void Collector::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
        const double units = run.counters.count("units") != 0 ? run.counters.at("units").value : 1;
        const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
        times_[run.run_name.function_name].push_back(seconds * 1e9 / units);
    }
}

double Collector::fastest(const std::string& name) const {
    const auto found = times_.find(name);
    if (found == times_.end()) return 0;
    return *std::ranges::min_element(found->second);
}

int measure(int argc, char** argv, void (*add)(), void (*print)(const Collector&)) {
    std::array<std::string, 3> defaults{"--benchmark_repetitions=25", "--benchmark_min_time=0.01",
                                        "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments(argv, argv + argc);
    for (std::string& option : defaults) {
        arguments.insert(arguments.begin() + 1, option.data());
    }
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
    add();
    Collector results;
    benchmark::RunSpecifiedBenchmarks(&results);
    print(results);
    benchmark::Shutdown();
    return 0;
}

double growthExponent(const std::vector<double>& sizes, const std::vector<double>& times) {
    const auto n = static_cast<double>(sizes.size());
    double sx = 0;
    double sy = 0;
    double sxx = 0;
    double sxy = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const double x = std::log(sizes[i]);
        const double y = std::log(times[i]);
        sx += x;
        sy += y;
        sxx += x * x;
        sxy += x * y;
    }
    return (n * sxy - sx * sy) / (n * sxx - sx * sx);
}

std::string duration(double nanoseconds) {
    char text[32];
    const char* unit = "ns";
    double value = nanoseconds;
    for (const char* larger : {"µs", "ms", "s"}) {
        if (value < 1000) break;
        value /= 1000;
        unit = larger;
    }
    std::snprintf(text, sizeof text, "%.3g %s", value, unit);
    return text;
}

} // namespace kelvo::bench
