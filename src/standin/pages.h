#pragma once

#include "automation/members.h"
#include "standin/document.h"

namespace tarncom32::standin {

/// The pages of a document, counted from 1: foreground pages in order, then background pages.
class Pages final : public automation::Described<Pages> {
public:
    static constexpr StringView kClassName = u"Pages";
    static const automation::ClassInfo& describe();

    explicit Pages(Ref<Document> document) : document_(std::move(document)) {}

    /// A new foreground page behind the others, named "Page-" and its position, or the next number that is free
    Ref<Page> add();
    Ref<Application> application() { return document_->application(); }
    std::int16_t count();
    Ref<Document> document() { return document_; }
    /// The page at a position or of a local name (without regard to case). Raises an error of Visio's when there is
    /// none.
    Ref<Page> item(const Variant& NameUIDOrIndex);
    /// The page at a position or of a universal name.
    Ref<Page> itemU(const Variant& NameUIDOrIndex);
    /// The page of an ID. Raises "Invalid sheet identifier" when there is none.
    Ref<Page> itemFromId(std::int32_t nID);
    /// 15.
    std::int16_t objectType() { return 15; }
    std::unique_ptr<Enumerator> newEnum();

    std::size_t size() const { return document_->model().pages().size(); }
    ObjectRef operator[](std::size_t position) const;

private:
    Ref<Document> document_;
};

} // namespace tarncom32::standin
