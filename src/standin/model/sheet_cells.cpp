#include "standin/model/sheet_cells.h"

#include <algorithm>

namespace tarncom32::standin {

namespace {

using automation::equalsIgnoreCase;

/// What one sheet says about an address.
struct Sighting {
    bool sectionDeleted = false;
    bool rowDeleted = false;
    bool row = false;
    String rowName; ///< universal
    const drawing::Cell* cell = nullptr;
};

/// Rows without a name are called by their position, as Visio does.
template <class Row>
String rowNameOf(const Row& row, std::size_t position) {
    if (row.name.present()) return String(row.name.view());
    const std::size_t number = row.index == drawing::noId ? position : row.index;
    return u"Row_" + automation::decimalText(static_cast<long long>(number) + 1);
}

template <class Row>
bool rowIsCalled(const Row& row, std::size_t position, StringView name, NameKind names) {
    if (row.name.present() && equalsIgnoreCase(row.name.view(), name)) return true;
    if (names == NameKind::Local && row.localName.present() && equalsIgnoreCase(row.localName.view(), name))
        return true;
    return !row.name.present() && equalsIgnoreCase(rowNameOf(row, position), name);
}

template <class Cells>
const drawing::Cell* cellIn(const Cells& cells, StringView name) {
    for (const drawing::Cell& cell : cells)
        if (equalsIgnoreCase(cell.name.view(), name)) return &cell;
    return nullptr;
}

template <class Sheet>
auto sectionIn(Sheet& sheet, const SectionKind& kind) -> decltype(&*sheet.sections.begin()) {
    for (auto& section : sheet.sections)
        if (section.name == kind.fileName) return &section;
    return nullptr;
}

template <class Section>
auto rowIn(Section& section, StringView name, NameKind names) -> decltype(&*section.rows.begin()) {
    std::size_t position = 0;
    for (auto& row : section.rows)
        if (rowIsCalled(row, position++, name, names)) return &row;
    return nullptr;
}

Sighting lookAt(const ShapeNode& node, const CellAddress& address, StringView rowName, NameKind names) {
    return readSheet(node, [&](const auto& sheet) {
        Sighting seen;
        if (!address.section) {
            seen.cell = cellIn(sheet.cells, address.cell);
            return seen;
        }
        const auto* section = sectionIn(sheet, *address.section);
        if (!section) return seen;
        seen.sectionDeleted = section->deleted;
        const auto* row = section->deleted ? nullptr : rowIn(*section, rowName, names);
        if (!row) return seen;
        seen.rowDeleted = row->deleted;
        seen.row = !row->deleted;
        seen.rowName = rowNameOf(*row, static_cast<std::size_t>(row - section->rows.data()));
        if (seen.row) seen.cell = cellIn(row->cells, address.cell);
        return seen;
    });
}

LocalSheet& editable(ShapeNode& node) {
    if (!node.edited)
        node.edited = node.file ? std::make_unique<LocalSheet>(*node.file) : std::make_unique<LocalSheet>();
    return *node.edited;
}

LocalSection& editableSection(ShapeNode& node, const SectionKind& kind, drawing::TextPool& pool) {
    LocalSheet& sheet = editable(node);
    LocalSection* section = sectionIn(sheet, kind);
    if (!section) {
        section = &sheet.sections.emplace_back();
        section->name = pool.fromUtf16(kind.fileName);
    }
    section->deleted = false;
    return *section;
}

LocalRow& editableRow(ShapeNode& node, const SectionKind& kind, StringView name, drawing::TextPool& pool) {
    LocalSection& section = editableSection(node, kind, pool);
    LocalRow* row = rowIn(section, name, NameKind::Universal);
    if (!row) {
        row = &section.rows.emplace_back();
        row->name = pool.fromUtf16(name);
    }
    row->deleted = false;
    return *row;
}

} // namespace

std::optional<FoundCell> findCell(const ShapeNode& node, const CellAddress& address, NameKind names, Reach reach) {
    FoundCell found{address};
    bool rowSeen = false;
    for (const ShapeNode* at = &node; at && !found.formula; at = at->prototype) {
        const Sighting seen = lookAt(*at, address, found.address.row, rowSeen ? NameKind::Universal : names);
        if (seen.sectionDeleted || seen.rowDeleted) break;
        if (seen.row) {
            // A cell that is not written anywhere is where its row is from.
            found.local = at == &node;
            if (!rowSeen) found.address.row = seen.rowName;
            rowSeen = true;
        }
        if (!seen.cell) continue;
        found.address.cell = seen.cell->name.view();
        if (!found.value) found.value = seen.cell;
        if (seen.cell->formula == u"Inh") continue;
        found.formula = seen.cell;
        found.local = at == &node;
    }
    const bool standard = !address.section && isStandardCell(address.cell, node.kind == ShapeKind::Page);
    if (!found.value && !rowSeen && !standard) return std::nullopt;
    if (reach == Reach::LocalOnly && !found.local) return std::nullopt;
    return found;
}

bool sectionExists(const ShapeNode& node, const SectionKind& kind, Reach reach) {
    for (const ShapeNode* at = &node; at; at = reach == Reach::Inherited ? at->prototype : nullptr) {
        const int seen = readSheet(*at, [&](const auto& sheet) {
            const auto* section = sectionIn(sheet, kind);
            return !section ? 0 : section->deleted ? -1 : 1;
        });
        if (seen != 0) return seen > 0;
    }
    return false;
}

std::vector<String> rowNames(const ShapeNode& node, const SectionKind& kind) {
    std::vector<const ShapeNode*> levels;
    for (const ShapeNode* at = &node; at; at = at->prototype)
        levels.push_back(at);
    std::vector<String> names;
    for (auto level = levels.rbegin(); level != levels.rend(); ++level)
        readSheet(**level, [&](const auto& sheet) {
            const auto* section = sectionIn(sheet, kind);
            if (!section) return;
            if (section->deleted) names.clear();
            std::size_t position = 0;
            for (const auto& row : section->rows) {
                const String name = rowNameOf(row, position++);
                const auto known =
                    std::ranges::find_if(names, [&](const String& n) { return equalsIgnoreCase(n, name); });
                if (row.deleted && known != names.end()) names.erase(known);
                if (!row.deleted && known == names.end()) names.push_back(name);
            }
        });
    return names;
}

drawing::Cell& ownCell(ShapeNode& node, const CellAddress& address, drawing::TextPool& pool) {
    std::vector<drawing::Cell>& cells =
        address.section ? editableRow(node, *address.section, address.row, pool).cells : editable(node).cells;
    for (drawing::Cell& cell : cells)
        if (equalsIgnoreCase(cell.name.view(), address.cell)) return cell;
    drawing::Cell& cell = cells.emplace_back();
    cell.name = pool.fromUtf16(address.cell);
    return cell;
}

void ownSection(ShapeNode& node, const SectionKind& section, drawing::TextPool& pool) {
    editableSection(node, section, pool);
}

void ownRow(ShapeNode& node, const SectionKind& section, StringView row, drawing::TextPool& pool) {
    editableRow(node, section, row, pool);
}

} // namespace tarncom32::standin
