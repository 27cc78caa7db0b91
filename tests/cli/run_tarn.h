#pragma once

#include <string>
#include <vector>

namespace tarncom32::tests {

/// What a run of the program left.
struct Outcome {
    int status; ///< exit status; minus the signal's number when it was killed
    std::string out;
    std::string err;
};

/// Runs tarn with these arguments, standard input closed, and nothing in the environment but `environment`
/// ("NAME=value"). Where standard output goes to the file `target`, `out` stays empty.
Outcome runTarn(const std::vector<std::string>& arguments, const std::vector<std::string>& environment = {},
                const char* target = nullptr);

/// The same with standard output on a terminal of 80 columns; what the terminal got is `out`, with "\n" as line end.
Outcome runTarnOnTerminal(const std::vector<std::string>& arguments, const std::vector<std::string>& environment);

} // namespace tarncom32::tests
