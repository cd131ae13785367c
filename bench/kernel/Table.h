#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace kelvo::bench {

/// Collects every repetition of every benchmark instead of printing it, for a table of medians.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;

    /// The median processor time of one unit of work in nanoseconds; 0 for an unknown name.
    double median(const std::string& name) const;

private:
    std::map<std::string, std::vector<double>> times_;
};

/// The slope of log(time) over log(size) by least squares: the exponent of growth.
double growthExponent(const std::vector<double>& sizes, const std::vector<double>& times);

/// "123 ns", "4.56 µs", "7.89 ms".
std::string duration(double nanoseconds);

} // namespace kelvo::bench
