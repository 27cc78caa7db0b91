#pragma once

#include "standin/drawing/drawing_file.h"
#include "standin/drawing/limits.h"

#include <string>

namespace tarncom32::standin::drawing {

/// Why the masters of a drawing cannot be resolved; both empty when they can.
struct MasterFault {
    std::string part;    ///< of the master at fault
    std::string problem; ///< "" when there is none
};

/// Looks for masters that contain instances of themselves, directly or through others, that use one another too deep,
/// or that stand for too many shapes once everything they use is unfolded (each of thirty masters holding two instances
/// of the next is a small file and a billion shapes). References to masters that do not exist count as none.
[[nodiscard]] MasterFault checkMasters(const DrawingFile& file, const Limits& limits);

} // namespace tarncom32::standin::drawing
