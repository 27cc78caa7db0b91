#include "standin/model/cell_address.h"

namespace tarncom32::standin {

String CellAddress::name() const {
    if (!section) return cell;
    String text = String(section->prefix) + u'.' + row;
    if (!automation::equalsIgnoreCase(cell, section->columns.front())) text += u'.' + cell;
    return text;
}

std::optional<CellAddress> parseCellName(StringView name) {
    const std::size_t point = name.find(u'.');
    if (point == StringView::npos) {
        if (name.empty()) return std::nullopt;
        return CellAddress{nullptr, {}, String(name)};
    }
    const SectionKind* section = sectionOf(name.substr(0, point));
    const StringView rest = name.substr(point + 1);
    const std::size_t second = rest.find(u'.');
    const StringView row = rest.substr(0, second);
    if (!section || row.empty()) return std::nullopt;
    if (second == StringView::npos) return CellAddress{section, String(row), String(section->columns.front())};
    const StringView wanted = rest.substr(second + 1);
    for (const StringView column : section->columns)
        if (automation::equalsIgnoreCase(column, wanted)) return CellAddress{section, String(row), String(column)};
    return std::nullopt;
}

} // namespace tarncom32::standin
