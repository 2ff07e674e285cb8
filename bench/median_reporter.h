#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

// Keeps the median of each benchmark's repetitions, by name, in milliseconds, for the lines
// the benchmarks print at the end.
class MedianReporter : public benchmark::ConsoleReporter {
public:
    std::map<std::string, double> medianMs;

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            if (run.aggregate_name == "median")
                medianMs[run.run_name.str()] = run.GetAdjustedRealTime() / 1e6;
        ConsoleReporter::ReportRuns(runs);
    }
};
