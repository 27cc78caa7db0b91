#include "standin/shapes.h"

#include "automation/collection.h"
#include "automation/convert.h"
#include "standin/shape.h"
#include "standin/visio_error.h"

namespace tarncom32::standin {

using automation::equalsIgnoreCase;

namespace {

/// The shape of a GUID among `nodes`, with `deep` in their groups too; null when there is none.
ShapeNode* findGuid(const std::vector<ShapeNode*>& nodes, StringView guid, bool deep) {
    std::vector<ShapeNode*> pending(nodes.rbegin(), nodes.rend());
    while (!pending.empty()) {
        ShapeNode& node = *pending.back();
        pending.pop_back();
        if (node.uniqueId.present() && equalsIgnoreCase(node.uniqueId.view(), guid)) return &node;
        if (deep) pending.insert(pending.end(), node.children.rbegin(), node.children.rend());
    }
    return nullptr;
}

} // namespace

const automation::ClassInfo& Shapes::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"The shapes of a page, a master or a group.", Guid{}, "d5ff6402-3c30-4c3e-b536-5bc4025dbbfe"_guid,
        {
            member::get<&Shapes::application>(1, u"Application", {}, u"The application."),
            member::get<&Shapes::count>(2, u"Count", {}, u"The number of shapes."),
            member::get<&Shapes::document>(3, u"Document", {}, u"The document."),
            member::get<&Shapes::item>(0, u"Item", {in(u"NameUIDOrIndex")},
                                       u"A shape by position, local name or GUID."),
            member::get<&Shapes::itemU>(4, u"ItemU", {in(u"NameUIDOrIndex")},
                                        u"A shape by position, universal name or GUID."),
            member::get<&Shapes::itemFromId>(5, u"ItemFromID", {in(u"nID")}, u"A shape by its ID."),
            member::get<&Shapes::objectType>(6, u"ObjectType", {}, u"The type of the object: 18."),
            member::newEnum<&Shapes::newEnum>(),
        });
    return info;
}

const std::vector<ShapeNode*>& Shapes::nodes() const {
    document_->requireOpen();
    if (group_ ? group_->deleted : container_.deleted)
        throw visio_error::inappropriateSource(u"what the shapes were in has been deleted");
    return group_ ? group_->children : container_.shapes;
}

Ref<Shape> Shapes::item(const Variant& NameUIDOrIndex) {
    return itemBy(NameUIDOrIndex, NameKind::Local);
}

Ref<Shape> Shapes::itemU(const Variant& NameUIDOrIndex) {
    return itemBy(NameUIDOrIndex, NameKind::Universal);
}

Ref<Shape> Shapes::itemBy(const Variant& index, NameKind names) {
    const std::vector<ShapeNode*>& shapes = nodes();
    if (const auto* text = index.as<String>()) {
        StringView guid = *text;
        const bool deep = guid.starts_with(u'*');
        if (deep || guid.starts_with(u"U{") || guid.starts_with(u"u{")) guid.remove_prefix(1);
        ShapeNode* found = guid.starts_with(u'{') ? findGuid(shapes, guid, deep) : nullptr;
        if (!found) found = container_.index.find(*text, names, group_);
        if (!found) throw visio_error::objectNameNotFound();
        return document_->objectOf(*found);
    }
    const std::int32_t position = automation::toLong(index);
    if (position < 1 || static_cast<std::size_t>(position) > shapes.size()) throw visio_error::positionOutOfRange();
    return document_->objectOf(*shapes[static_cast<std::size_t>(position) - 1]);
}

Ref<Shape> Shapes::itemFromId(std::int32_t nID) {
    nodes();
    const auto found = container_.byId.find(static_cast<std::uint32_t>(nID));
    if (found == container_.byId.end()) throw visio_error::invalidSheetIdentifier();
    return document_->objectOf(*found->second);
}

std::unique_ptr<Enumerator> Shapes::newEnum() {
    return std::make_unique<automation::ListEnumerator<Shapes>>(Ref<Shapes>(this));
}

ObjectRef Shapes::operator[](std::size_t position) const {
    const std::vector<ShapeNode*>& shapes = nodes();
    // A walk asks for the next one soon, and shapes lie far apart in a large drawing.
    if (position + 1 < shapes.size()) __builtin_prefetch(shapes[position + 1]);
    return document_->objectOf(*shapes[position]);
}

} // namespace tarncom32::standin
