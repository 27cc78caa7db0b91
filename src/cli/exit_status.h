#pragma once

namespace tarncom32::cli {

/// How the program ends.
namespace exit_status {
inline constexpr int kDone = 0;
inline constexpr int kRaised = 1; ///< the member, or a step of the session, raised an error
inline constexpr int kUsage = 2;  ///< the command line is wrong
} // namespace exit_status

} // namespace tarncom32::cli
