#pragma once

#include <cstddef>
#include <cstdint>

namespace tarncom32::standin::drawing {

/// What a file may ask of the reader before it is refused. The defaults leave room for drawings far larger than Visio
/// itself handles with ease; tests and hosts with little memory set lower ones.
struct Limits {
    /// Bytes of the package as it lies on the disk.
    std::uint64_t maxFileBytes = 256ull << 20;

    /// Entries in the package, and relationships of one part.
    std::int64_t maxParts = 20'000;

    /// Bytes of one part after unpacking.
    std::uint64_t maxPartBytes = 256ull << 20;

    /// Bytes of all parts that are read, after unpacking.
    std::uint64_t maxTotalBytes = 512ull << 20;

    /// Unpacked bytes for each packed byte, looked at only once a part is larger than `ratioFreeBytes`. The XML of real
    /// drawings packs 10 to 40 times.
    std::uint64_t maxRatio = 250;

    /// Unpacked bytes up to which any ratio is believed.
    std::uint64_t ratioFreeBytes = 16ull << 20;

    /// Shapes in all pages and masters, and the shapes that any one master stands for once the masters it uses itself
    /// are unfolded.
    std::size_t maxShapes = 1'000'000;

    /// Groups within groups. (libxml2 itself stops at 256 elements, about 125 groups.)
    int maxShapeDepth = 100;

    /// Masters that use masters that use masters.
    int maxMasterDepth = 64;

    /// Bytes of memory for the cells, rows, shapes and strings of the drawing.
    std::size_t maxModelBytes = std::size_t{512} << 20;

    /// UTF-16 units of one shape's text.
    std::size_t maxTextUnits = std::size_t{4} << 20;
};

} // namespace tarncom32::standin::drawing
