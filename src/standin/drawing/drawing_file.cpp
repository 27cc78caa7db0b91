#include "standin/drawing/drawing_file.h"

#include <algorithm>

namespace tarncom32::standin::drawing {

namespace {

template <typename Items>
auto named(const Items& items, std::u16string_view name) noexcept -> decltype(&*items.begin()) {
    const auto found = std::find_if(items.begin(), items.end(), [&](const auto& item) { return item.name == name; });
    return found == items.end() ? nullptr : &*found;
}

template <typename Items>
auto withId(const Items& items, std::uint32_t id) noexcept -> decltype(&*items.begin()) {
    if (id == noId) return nullptr;
    const auto found = std::find_if(items.begin(), items.end(), [&](const auto& item) { return item.id == id; });
    return found == items.end() ? nullptr : &*found;
}

} // namespace

const Cell* Row::cell(std::u16string_view cellName) const noexcept {
    return named(cells, cellName);
}

const Row* Section::row(std::u16string_view rowName) const noexcept {
    return named(rows, rowName);
}

const Cell* Sheet::cell(std::u16string_view cellName) const noexcept {
    return named(cells, cellName);
}

const Section* Sheet::section(std::u16string_view sectionName, std::uint32_t index) const noexcept {
    const auto found = std::find_if(sections.begin(), sections.end(), [&](const Section& section) {
        return section.name == sectionName && (index == noId || section.index == index);
    });
    return found == sections.end() ? nullptr : &*found;
}

const Shape* Contents::find(std::uint32_t id) const noexcept {
    const auto found = std::lower_bound(byId.begin(), byId.end(), id,
                                        [](const Entry& entry, std::uint32_t key) { return entry.id < key; });
    return found != byId.end() && found->id == id ? found->shape : nullptr;
}

const Shape* Master::top() const noexcept {
    for (const Shape& shape : contents.shapes)
        if (!shape.deleted) return &shape;
    return nullptr;
}

const Page* DrawingFile::page(std::uint32_t id) const noexcept {
    return withId(pages, id);
}

const Master* DrawingFile::master(std::uint32_t id) const noexcept {
    return withId(masters, id);
}

const StyleSheet* DrawingFile::style(std::uint32_t id) const noexcept {
    return withId(styles, id);
}

} // namespace tarncom32::standin::drawing
