#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace kelvo::bench {

/// Collects every repetition of every benchmark instead of printing it, for a table.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;

    /// The processor time of one unit of work in nanoseconds, in the fastest repetition: what else
    /// the machine does only ever adds to it. 0 for an unknown name.
    double fastest(const std::string& name) const;

private:
    std::map<std::string, std::vector<double>> times_;
};

/// Runs what `add` registers, interleaved in 25 short repetitions, and prints it with `print`. The
/// caller's Google Benchmark options come later and count. The result is main's.
int measure(int argc, char** argv, void (*add)(), void (*print)(const Collector&));

/// The slope of log(time) over log(size) by least squares: the exponent of growth.
double growthExponent(const std::vector<double>& sizes, const std::vector<double>& times);

/// "123 ns", "4.56 µs", "7.89 ms".
std::string duration(double nanoseconds);

} // namespace kelvo::bench
