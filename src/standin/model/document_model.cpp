#include "standin/model/document_model.h"

#include "standin/model/document_loader.h"
#include "standin/visio_error.h"

#include <algorithm>
#include <limits>

namespace tarncom32::standin {

namespace {

// Add-ins walk groups by recursion, on stacks of as little as 1 MB.
constexpr std::size_t kMostGroups = 500;

/// Whether a shape of that height can be in `parent` (null: at the top level).
bool hasRoom(const ShapeNode* parent, std::size_t height) {
    for (; parent && height <= kMostGroups; parent = parent->parent)
        ++height;
    return height <= kMostGroups;
}

/// The longest way down: 1 for a shape without others in it.
std::size_t heightOf(const ShapeNode& node) {
    std::size_t below = 0;
    for (const ShapeNode* child : node.children)
        below = std::max(below, heightOf(*child));
    return below + 1;
}

void requireRoom(const ShapeNode* parent, std::size_t height) {
    if (!hasRoom(parent, height)) throw visio_error::presentlyDisabled(u"the groups are nested too deeply");
}

} // namespace

DocumentModel::DocumentModel()
    : memory_(std::numeric_limits<std::size_t>::max()), nodeLimit_(std::numeric_limits<std::size_t>::max()) {
    document_.kind = Container::Kind::Document;
    newSheet(document_, ShapeKind::Document);
}

DocumentModel::DocumentModel(drawing::DrawingFile file, const drawing::Limits& limits) : DocumentModel() {
    file_ = std::move(file);
    // Shapes that the file has, and as many again that its instances inherit.
    nodeLimit_ = 2 * limits.maxShapes;
    DocumentLoader(*this, file_).load();
    nodeLimit_ = std::numeric_limits<std::size_t>::max();
}

bool DocumentModel::hasRoomFor(const ShapeNode& prototype, const ShapeNode& parent) {
    return hasRoom(&parent, heightOf(prototype));
}

ShapeNode& DocumentModel::newNode(Container& container, ShapeNode* parent, ShapeKind kind, std::uint32_t id) {
    if (nodes_.size() >= nodeLimit_) throw InheritsTooMuch{"inherit too many shapes from masters"};
    ShapeNode& node = nodes_.emplace_back();
    node.container = &container;
    node.parent = parent;
    node.kind = kind;
    node.id = id;
    container.siblingsOf(node).push_back(&node);
    container.byId.emplace(id, &node);
    return node;
}

ShapeNode& DocumentModel::newSheet(Container& container, ShapeKind kind) {
    ShapeNode& sheet = nodes_.emplace_back();
    sheet.container = &container;
    sheet.kind = kind;
    container.sheet = &sheet;
    return sheet;
}

Container& DocumentModel::addPage(StringView name) {
    Container& page = containers_.emplace_back();
    page.name = page.nameU = name;
    for (const Container* other : pages_)
        page.id = std::max(page.id, other->id + 1);
    newSheet(page, ShapeKind::Page);
    pages_.insert(std::ranges::find_if(pages_, &Container::background), &page);
    changed = true;
    return page;
}

Container& DocumentModel::addMaster(StringView name) {
    Container& master = containers_.emplace_back();
    master.kind = Container::Kind::Master;
    master.name = master.nameU = name;
    for (const Container* other : masters_)
        master.id = std::max(master.id, other->id + 1);
    newSheet(master, ShapeKind::Page);
    masters_.push_back(&master);
    changed = true;
    return master;
}

void DocumentModel::removePage(Container& page) {
    std::erase(pages_, &page);
    page.deleted = true;
    for (auto& [id, node] : page.byId)
        node->deleted = true;
    page.sheet->deleted = true;
    changed = true;
}

ShapeNode& DocumentModel::addShape(Container& container, ShapeNode* parent, ShapeKind kind) {
    requireRoom(parent, 1);
    changed = true;
    return newNode(container, parent, kind, container.takeId());
}

ShapeNode& DocumentModel::addInstance(Container& container, ShapeNode* parent, Container& master) {
    if (master.shapes.empty()) throw visio_error::inappropriateTarget(u"the master has no shape");
    if (&container == &master) throw visio_error::inappropriateTarget(u"a master cannot contain itself");
    requireRoom(parent, heightOf(*master.shapes.front()));
    ShapeNode& node = inherit(container, parent, *master.shapes.front());
    node.master = &master;
    // A master's first instance has the plain name of the master.
    for (const NameKind kind : {NameKind::Local, NameKind::Universal}) {
        const StringView name = kind == NameKind::Local ? master.name : master.nameU;
        if (!container.index.find(name, kind, parent))
            (kind == NameKind::Local ? node.name : node.nameU) = texts_.fromUtf16(name);
    }
    container.index.added(node);
    changed = true;
    return node;
}

ShapeNode& DocumentModel::inherit(Container& container, ShapeNode* parent, const ShapeNode& prototype) {
    ShapeNode& node = newNode(container, parent, prototype.kind, container.takeId());
    node.prototype = &prototype;
    for (const ShapeNode* child : prototype.children)
        inheritChild(node, *child);
    return node;
}

void DocumentModel::inheritChild(ShapeNode& node, const ShapeNode& prototype) {
    ShapeNode& child = inherit(*node.container, &node, prototype);
    child.master = prototype.master;
    // Named after the sub-shape in the master, where that has a name.
    const String suffix = u'.' + automation::decimalText(child.id);
    if (!prototype.name.empty()) child.name = texts_.fromUtf16(String(prototype.name.view()) + suffix);
    if (!prototype.nameU.empty()) child.nameU = texts_.fromUtf16(String(prototype.nameU.view()) + suffix);
    node.container->index.added(child);
}

void DocumentModel::removeShape(ShapeNode& node) {
    if (node.isSheet()) throw visio_error::inappropriateSource(u"a sheet of a page or document cannot be deleted");
    std::erase(node.container->siblingsOf(node), &node);
    std::vector<ShapeNode*> pending{&node};
    while (!pending.empty()) {
        ShapeNode& gone = *pending.back();
        pending.pop_back();
        gone.container->index.removing(gone);
        gone.container->byId.erase(gone.id);
        gone.container->freeId(gone.id);
        gone.deleted = true;
        pending.insert(pending.end(), gone.children.begin(), gone.children.end());
    }
    changed = true;
}

void DocumentModel::rename(ShapeNode& node, StringView name, NameKind kind) {
    if (node.isSheet()) throw visio_error::inappropriateSource(u"the sheets of pages and documents keep their names");
    if (name.empty()) throw visio_error::invalidParameter(u"a name cannot be empty");
    const bool both = !node.renamed;
    Container& container = *node.container;
    for (const NameKind each : {NameKind::Local, NameKind::Universal}) {
        if (each != kind && !both) continue;
        const ShapeNode* owner = container.index.findBeside(name, each, node.parent);
        if (owner && owner != &node) throw visio_error::nameInUse(name);
    }
    // Both names are written down before one of them changes, so that the other stays what it was.
    const String local = nameOf(node, NameKind::Local);
    const String universal = nameOf(node, NameKind::Universal);
    container.index.removing(node);
    node.name = texts_.fromUtf16(both || kind == NameKind::Local ? name : local);
    node.nameU = texts_.fromUtf16(both || kind == NameKind::Universal ? name : universal);
    node.renamed = true;
    container.index.added(node);
    changed = true;
}

} // namespace tarncom32::standin
