// In place of the reader, where the libraries that it needs are not there.

#include "standin/drawing/drawing_reader.h"

namespace tarncom32::standin::drawing {

DrawingFile readDrawing(const std::filesystem::path&, const Limits&) {
    throw DrawingError({}, {}, "This build of the stand-in reads no drawings. Add a blank document and draw in it.");
}

DrawingFile readDrawing(std::span<const std::byte>, std::string label, const Limits& limits) {
    return readDrawing(std::filesystem::path(std::move(label)), limits);
}

} // namespace tarncom32::standin::drawing
