#pragma once

#include "standin/drawing/drawing_error.h"
#include "standin/drawing/drawing_file.h"
#include "standin/drawing/limits.h"

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>

namespace tarncom32::standin::drawing {

/// Reads a .vsdx, .vsdm, .vssx, .vssm, .vstx or .vstm file.
///
///     const DrawingFile drawing = readDrawing("examples/drawings/office-network.vsdx");
///     for (const Page& page : drawing.pages)
///         walk(page.contents.shapes);
///
/// Whatever is wrong with the file raises one DrawingError that names the part: it is no package or no Visio drawing; a
/// part that it refers to is missing, damaged, malformed or of another kind; ids come twice; masters use themselves; a
/// relationship leads out of the package; a part declares a document type; a limit is passed. Elements and attributes
/// that are not known are passed over. Nothing outside the file is read. The Windows build, which reads no drawings,
/// raises one for every file.
[[nodiscard]] DrawingFile readDrawing(const std::filesystem::path& path, const Limits& limits = {});

/// The same for a file in memory, which is needed only during the call. `label` stands for its name in messages.
[[nodiscard]] DrawingFile readDrawing(std::span<const std::byte> bytes, std::string label, const Limits& limits = {});

} // namespace tarncom32::standin::drawing
