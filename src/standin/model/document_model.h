#pragma once

#include "standin/drawing/limits.h"
#include "standin/model/container.h"

#include <deque>
#include <filesystem>

namespace tarncom32::standin {

/// What a document consists of: its pages and masters with their shapes. It stays where it is; the nodes are its own
/// and live as long as it does, deleted ones included, because objects of a caller may still refer to them.
class DocumentModel {
public:
    /// A document without pages.
    DocumentModel();
    /// The document in a file, with what its instances inherit from masters spelt out. Raises a DrawingError for a
    /// file that the reader refuses, and for one whose instances inherit more shapes than `limits` allow.
    explicit DocumentModel(drawing::DrawingFile file, const drawing::Limits& limits = {});
    DocumentModel(const DocumentModel&) = delete;
    DocumentModel& operator=(const DocumentModel&) = delete;

    drawing::DocumentKind kind() const { return file_.kind; }
    ShapeNode& documentSheet() { return *document_.sheet; }
    /// In Visio's order: foreground pages, then background pages.
    std::vector<Container*>& pages() { return pages_; }
    std::vector<Container*>& masters() { return masters_; }

    /// Keeps texts of this document.
    drawing::TextPool& texts() { return texts_; }

    /// A page behind the last foreground page, or a master at the end, without shapes.
    Container& addPage(StringView name);
    Container& addMaster(StringView name);
    /// Takes the page out; its shapes count as deleted.
    void removePage(Container& page);

    /// A shape in front of the others in `parent` (null: of the container's top level). Raises, as `addInstance` does,
    /// where groups would be nested more than 500 deep.
    ShapeNode& addShape(Container& container, ShapeNode* parent, ShapeKind kind);
    /// The same as an instance of `master`, with all sub-shapes that it inherits.
    ShapeNode& addInstance(Container& container, ShapeNode* parent, Container& master);
    /// Takes the shape and all that is in it out.
    void removeShape(ShapeNode& node);

    /// Gives a shape a name, the first time its universal one too. Raises when a shape beside
    /// it has it, or when it is empty.
    void rename(ShapeNode& node, StringView name, NameKind kind);

    /// Changed since it was opened, added or marked as saved.
    bool changed = false;

private:
    friend class DocumentLoader;

    ShapeNode& newNode(Container& container, ShapeNode* parent, ShapeKind kind, std::uint32_t id);
    ShapeNode& newSheet(Container& container, ShapeKind kind);
    ShapeNode& inherit(Container& container, ShapeNode* parent, const ShapeNode& prototype);
    /// Whether a sub-shape like `prototype` can be in `parent` without the groups getting too deep.
    static bool hasRoomFor(const ShapeNode& prototype, const ShapeNode& parent);
    void inheritChild(ShapeNode& node, const ShapeNode& prototype);

    drawing::DrawingFile file_;
    drawing::Arena memory_;
    drawing::TextPool texts_{memory_};
    std::deque<ShapeNode> nodes_;
    std::deque<Container> containers_;
    Container document_;
    std::vector<Container*> pages_;
    std::vector<Container*> masters_;
    std::size_t nodeLimit_;
};

} // namespace tarncom32::standin
