#pragma once

#include "standin/model/name_index.h"
#include "standin/model/shape_node.h"

#include <set>
#include <unordered_map>

namespace tarncom32::standin {

/// Something that holds shapes whose ids and names are unique in it: a page or a master. The document's own sheet is
/// in a container that holds nothing else.
struct Container {
    enum class Kind : std::uint8_t { Document, Page, Master };

    Kind kind = Kind::Page;
    std::uint32_t id = 0;
    String name;
    String nameU;
    String uniqueId; ///< of a master
    bool renamed = false;
    bool background = false;
    bool deleted = false;
    ShapeNode* sheet = nullptr;
    std::vector<ShapeNode*> shapes; ///< top level, back to front
    std::unordered_map<std::uint32_t, ShapeNode*> byId;
    automation::Object* object = nullptr; ///< the Page or Master while one is alive; not owned
    NameIndex index{*this};

    Container() = default;
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    /// An id that no shape has: of deleted shapes the lowest, else the one behind the highest.
    std::uint32_t takeId();
    /// Makes `id` known as taken.
    void noteId(std::uint32_t used);
    void freeId(std::uint32_t free) { freed_.insert(free); }

    /// The shapes that stand beside `node`, itself included.
    std::vector<ShapeNode*>& siblingsOf(const ShapeNode& node) { return node.parent ? node.parent->children : shapes; }

private:
    std::set<std::uint32_t> freed_;
    std::uint32_t next_ = 1;
};

} // namespace tarncom32::standin
