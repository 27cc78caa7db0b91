#pragma once

#include "standin/drawing/sheet.h"

#include <vector>

namespace tarncom32::standin {

/// The editable forms of a file's rows, sections and sheets. Their members are called alike, so that what only reads
/// is written once for both.
struct LocalRow {
    drawing::Text name;
    drawing::Text localName;
    drawing::Text type;
    std::uint32_t index = drawing::noId;
    bool deleted = false;
    std::vector<drawing::Cell> cells;
};

struct LocalSection {
    drawing::Text name;
    std::uint32_t index = drawing::noId;
    bool deleted = false;
    std::vector<drawing::Cell> cells;
    std::vector<LocalRow> rows;
};

struct LocalSheet {
    std::vector<drawing::Cell> cells;
    std::vector<LocalSection> sections;

    LocalSheet() = default;
    /// A copy of what the file has.
    explicit LocalSheet(const drawing::Sheet& sheet);
};

} // namespace tarncom32::standin
