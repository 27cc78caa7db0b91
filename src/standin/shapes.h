#pragma once

#include "automation/members.h"
#include "standin/document.h"

namespace tarncom32::standin {

/// The shapes at the top level of a page or master, or in a group, counted from 1, back to front. A walk sees the
/// shapes by their positions at each step.
class Shapes final : public automation::Described<Shapes> {
public:
    static constexpr StringView kClassName = u"Shapes";
    static const automation::ClassInfo& describe();

    /// The shapes of `container`, or of `group` in it.
    Shapes(Ref<Document> document, Container& container, ShapeNode* group)
        : document_(std::move(document)), container_(container), group_(group) {}

    Ref<Application> application() { return document_->application(); }
    /// The page or group is not counted, nor what is inside of the shapes.
    std::int32_t count() { return static_cast<std::int32_t>(size()); }
    Ref<Document> document() { return document_; }
    /// The shape at a position, or of a local name (without regard to case), or of a GUID. A name is looked for
    /// here first, then in the whole page or master, whatever group the shape is in; a GUID in this collection, after
    /// "*" in its groups too. Raises an error of Visio's when there is none.
    Ref<Shape> item(const Variant& NameUIDOrIndex);
    /// The same with universal names.
    Ref<Shape> itemU(const Variant& NameUIDOrIndex);
    /// The shape of an ID, anywhere in the page or master. Raises "Invalid sheet identifier" when there is none.
    Ref<Shape> itemFromId(std::int32_t nID);
    /// 18.
    std::int16_t objectType() { return 18; }
    std::unique_ptr<Enumerator> newEnum();

    /// Raises once the document was closed or the page or group was deleted.
    std::size_t size() const { return nodes().size(); }
    ObjectRef operator[](std::size_t position) const;

private:
    const std::vector<ShapeNode*>& nodes() const;
    Ref<Shape> itemBy(const Variant& index, NameKind names);

    Ref<Document> document_;
    Container& container_;
    ShapeNode* group_;
};

} // namespace tarncom32::standin
