#pragma once

#include "automation/members.h"
#include "standin/document.h"

namespace tarncom32::standin {

/// The masters of a document's own stencil, counted from 1.
class Masters final : public automation::Described<Masters> {
public:
    static constexpr StringView kClassName = u"Masters";
    static const automation::ClassInfo& describe();

    explicit Masters(Ref<Document> document) : document_(std::move(document)) {}

    /// A new master without a shape, named "Master." and the next number that is free, from 0
    Ref<Master> add();
    Ref<Application> application() { return document_->application(); }
    std::int16_t count();
    Ref<Document> document() { return document_; }
    /// The master at a position, of a local name (without regard to case) or of a unique ID. Raises "Object name not
    /// found" or another error of Visio's when there is none.
    Ref<Master> item(const Variant& NameUIDOrIndex);
    /// The master at a position, of a universal name or of a unique ID.
    Ref<Master> itemU(const Variant& NameUIDOrIndex);
    /// The master of an ID. Raises "Invalid sheet identifier" when there is none.
    Ref<Master> itemFromId(std::int32_t nID);
    /// 13.
    std::int16_t objectType() { return 13; }
    std::unique_ptr<Enumerator> newEnum();

    std::size_t size() const { return document_->model().masters().size(); }
    ObjectRef operator[](std::size_t position) const;

private:
    Ref<Document> document_;
};

} // namespace tarncom32::standin
