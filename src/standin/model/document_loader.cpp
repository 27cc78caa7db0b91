#include "standin/model/document_loader.h"

#include "standin/drawing/drawing_error.h"

#include <unordered_set>

namespace tarncom32::standin {

namespace {

ShapeKind kindOf(drawing::ShapeType type, const ShapeNode* prototype) {
    switch (type) {
    case drawing::ShapeType::Unspecified:
        return prototype ? prototype->kind : ShapeKind::Shape;
    case drawing::ShapeType::Shape:
        return ShapeKind::Shape;
    case drawing::ShapeType::Group:
        return ShapeKind::Group;
    case drawing::ShapeType::Foreign:
        return ShapeKind::Foreign;
    case drawing::ShapeType::Guide:
        return ShapeKind::Guide;
    }
    return ShapeKind::Shape;
}

} // namespace

void DocumentLoader::load() {
    model_.documentSheet().file = &file_.sheet;
    for (const drawing::Master& master : file_.masters) {
        Container& container = model_.addMaster(master.name.view());
        container.id = master.id;
        container.nameU = master.nameU.view();
        container.uniqueId = master.uniqueId.view();
        container.sheet->file = &master.sheet;
        masterPlaces_.emplace(master.id, masterPlaces_.size());
    }
    filled_.assign(file_.masters.size(), false);
    for (std::size_t i = 0; i < file_.masters.size(); ++i)
        ensureFilled(i);
    for (const drawing::Page& page : file_.pages) {
        Container& container = model_.addPage(page.name.view());
        container.id = page.id;
        container.nameU = page.nameU.view();
        container.renamed = page.customName || page.customNameU;
        container.sheet->file = &page.sheet;
        fill(container, page.contents, page.part);
        container.background = page.background;
    }
    model_.changed = false;
}

// A shape can inherit only from a master whose own shapes are there: masters are filled in the order of their use. The
// reader has refused masters that use themselves.
void DocumentLoader::ensureFilled(std::size_t master) {
    if (filled_[master]) return;
    filled_[master] = true;
    fill(*model_.masters()[master], file_.masters[master].contents, file_.masters[master].part);
}

Container* DocumentLoader::masterOf(std::uint32_t id) {
    const auto found = masterPlaces_.find(id);
    if (found == masterPlaces_.end()) return nullptr;
    ensureFilled(found->second);
    return model_.masters()[found->second];
}

void DocumentLoader::fill(Container& container, const drawing::Contents& contents, const std::string& part) {
    // All ids of the file first, so that inherited shapes get others.
    for (const drawing::Contents::Entry& entry : contents.byId)
        container.noteId(entry.id);
    try {
        addShapes(container, nullptr, contents.shapes, nullptr);
    } catch (const InheritsTooMuch& inherits) {
        throw drawing::DrawingError("the drawing", part, std::string("has instances that ") + inherits.what);
    }
}

void DocumentLoader::addShapes(Container& container, ShapeNode* parent, std::span<const drawing::Shape> shapes,
                               Container* enclosing) {
    for (const drawing::Shape& shape : shapes) {
        if (shape.deleted) continue;
        ShapeNode& node = model_.newNode(container, parent, ShapeKind::Shape, shape.id);
        tie(node, shape, enclosing);
        addShapes(container, &node, shape.shapes, node.master ? node.master : enclosing);
        if (node.prototype) addInherited(node, shape.shapes);
    }
}

void DocumentLoader::tie(ShapeNode& node, const drawing::Shape& shape, Container* enclosing) {
    if (Container* master = masterOf(shape.master)) {
        node.master = master;
        if (!master->shapes.empty()) node.prototype = master->shapes.front();
    } else if (enclosing && shape.masterShape != drawing::noId) {
        const auto found = enclosing->byId.find(shape.masterShape);
        if (found != enclosing->byId.end()) node.prototype = found->second;
    }
    node.kind = kindOf(shape.type, node.prototype);
    node.name = shape.sheet.name;
    node.nameU = shape.sheet.nameU;
    node.uniqueId = shape.sheet.uniqueId;
    node.renamed = shape.sheet.customName || shape.sheet.customNameU;
    node.text = shape.text;
    node.file = &shape.sheet;
}

// Sub-shapes of the prototype that the file neither has nor deletes follow those that it has, in the master's order.
void DocumentLoader::addInherited(ShapeNode& node, std::span<const drawing::Shape> written) {
    std::unordered_set<std::uint32_t> covered;
    for (const drawing::Shape& shape : written)
        covered.insert(shape.masterShape);
    for (const ShapeNode* child : node.prototype->children) {
        if (covered.contains(child->id)) continue;
        if (!DocumentModel::hasRoomFor(*child, node)) throw InheritsTooMuch{"nest the groups of masters too deeply"};
        model_.inheritChild(node, *child);
    }
}

} // namespace tarncom32::standin
