#include "standin/model/local_sheet.h"

namespace tarncom32::standin {

namespace {

std::vector<drawing::Cell> copyOf(std::span<const drawing::Cell> cells) {
    return {cells.begin(), cells.end()};
}

} // namespace

LocalSheet::LocalSheet(const drawing::Sheet& sheet) : cells(copyOf(sheet.cells)) {
    for (const drawing::Section& section : sheet.sections) {
        LocalSection copy{section.name, section.index, section.deleted, copyOf(section.cells), {}};
        for (const drawing::Row& row : section.rows)
            copy.rows.push_back({row.name, row.localName, row.type, row.index, row.deleted, copyOf(row.cells)});
        sections.push_back(std::move(copy));
    }
}

} // namespace tarncom32::standin
