#include "support/comparison.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <optional>

namespace tarncom32::bench {

namespace {

struct Job {
    std::string name;
    std::vector<Alternative> alternatives;
};

std::vector<Job>& jobs() {
    static std::vector<Job> all;
    return all;
}

std::string runName(const Job& job, const Alternative& alternative) {
    return job.name + "/" + alternative.name;
}

// Collects the times, and leaves the printing to the end.
class Times final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration) nanoseconds_[run.run_name.function_name] = run.GetAdjustedCPUTime();
    }
    std::optional<double> of(const Job& job, const Alternative& alternative) const {
        const auto found = nanoseconds_.find(runName(job, alternative));
        return found == nanoseconds_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::map<std::string, double> nanoseconds_;
};

std::string timeText(double nanoseconds) {
    char text[32];
    if (nanoseconds < 1e4)
        std::snprintf(text, sizeof text, "%.0f ns", nanoseconds);
    else if (nanoseconds < 1e7)
        std::snprintf(text, sizeof text, "%.1f us", nanoseconds / 1e3);
    else
        std::snprintf(text, sizeof text, "%.1f ms", nanoseconds / 1e6);
    return text;
}

void print(const Times& times) {
    std::size_t width = 0;
    for (const Job& job : jobs())
        width = std::max(width, job.name.size());
    for (const Job& job : jobs()) {
        const auto own = times.of(job, job.alternatives.front());
        if (!own) continue; // Filtered out.
        std::printf("%-*s  %10s", static_cast<int>(width), job.name.c_str(), timeText(*own).c_str());
        for (std::size_t i = 1; i < job.alternatives.size(); ++i)
            if (const auto peer = times.of(job, job.alternatives[i]))
                std::printf("   %s %s (x %.2f)", job.alternatives[i].name.c_str(), timeText(*peer).c_str(),
                            *peer / *own);
        std::printf("\n");
    }
}

bool allAgree() {
    bool agree = true;
    for (const Job& job : jobs()) {
        const std::size_t expected = job.alternatives.front().run();
        for (const Alternative& alternative : job.alternatives) {
            if (alternative.run() == expected) continue;
            std::fprintf(stderr, "%s: the result differs\n", runName(job, alternative).c_str());
            agree = false;
        }
    }
    return agree;
}

} // namespace

void addComparison(std::string job, std::vector<Alternative> alternatives) {
    jobs().push_back({std::move(job), std::move(alternatives)});
}

int runComparisons(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    if (!allAgree()) return 1;
    for (const Job& job : jobs())
        for (const Alternative& alternative : job.alternatives)
            benchmark::RegisterBenchmark(runName(job, alternative).c_str(), [&alternative](benchmark::State& state) {
                for (auto _ : state)
                    benchmark::DoNotOptimize(alternative.run());
            })->MinTime(0.1);
    Times times;
    benchmark::RunSpecifiedBenchmarks(&times);
    print(times);
    return 0;
}

} // namespace tarncom32::bench
