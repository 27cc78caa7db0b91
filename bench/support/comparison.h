#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Comparisons of several ways to do one job. A benchmark program adds its jobs and runs them:
///
///     int main(int argc, char** argv) {
///         addComparison("sum of 1000", {{"library", [] { return ... ; }}, {"plain loop", [] { return ... ; }}});
///         return runComparisons(argc, argv);
///     }
namespace tarncom32::bench {

/// One way to do a job.
struct Alternative {
    std::string name;
    /// Does the job once. What it returns depends on the result and on nothing else: alternatives that return
    /// different numbers do not do the same, and the run fails.
    std::function<std::size_t()> run;
};

/// Adds a job; the first alternative is the one that the others are compared with.
void addComparison(std::string job, std::vector<Alternative> alternatives);

/// Runs the jobs and prints a line for each: the time of the first alternative, and for every other one its time
/// and how many times as long it takes. Understands Google Benchmark's arguments. Returns the program's exit code.
int runComparisons(int argc, char** argv);

} // namespace tarncom32::bench
