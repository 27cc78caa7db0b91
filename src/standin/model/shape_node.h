#pragma once

#include "standin/drawing/drawing_file.h"
#include "standin/forward.h"
#include "standin/model/local_sheet.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tarncom32::standin {

struct Container;

/// What a shape is, numbered as Visio numbers it.
enum class ShapeKind : std::int16_t { Page = 1, Group = 2, Shape = 3, Foreign = 4, Guide = 5, Document = 6 };

/// A shape, or the sheet of a page, a master or the document. Its document owns it and keeps it, emptied, after its
/// deletion, so pointers to it hold as long as the document. What a walk looks at comes first, in one cache line.
struct alignas(64) ShapeNode {
    Container* container = nullptr;     ///< the page, the master or the document it is in
    ShapeNode* parent = nullptr;        ///< the group around it; null at the top level
    std::vector<ShapeNode*> children{}; ///< sub-shapes, back to front
    Shape* object = nullptr;            ///< the automation object while one is alive; not owned
    std::uint32_t id = 0;               ///< unique in its container; 0 for the sheets
    ShapeKind kind = ShapeKind::Shape;
    bool renamed = false; ///< somebody gave it a name
    bool deleted = false;

    const ShapeNode* prototype = nullptr; ///< what it inherits cells, type and text from
    Container* master = nullptr;          ///< the master that it is an instance of
    drawing::Text name{};                 ///< absent: as the universal name, or the default name
    drawing::Text nameU{};                ///< absent: as the local name, or the default name
    drawing::Text text{};                 ///< absent: inherited
    drawing::Text uniqueId{};             ///< absent: none was made
    const drawing::Sheet* file = nullptr; ///< its cells as they came from the file, until one is changed
    std::unique_ptr<LocalSheet> edited{}; ///< its cells from then on

    bool isSheet() const { return kind == ShapeKind::Page || kind == ShapeKind::Document; }
};

/// Calls `read` with the sheet's own cells and sections, as a `drawing::Sheet` or as a `LocalSheet`.
template <class F>
decltype(auto) readSheet(const ShapeNode& node, F&& read) {
    if (node.edited) return read(std::as_const(*node.edited));
    static const drawing::Sheet empty{};
    return read(node.file ? *node.file : empty);
}

} // namespace tarncom32::standin
