#pragma once

#include "automation/members.h"
#include "standin/application.h"

namespace tarncom32::standin {

/// The open documents of an application, counted from 1.
class Documents final : public automation::Described<Documents> {
public:
    static constexpr StringView kClassName = u"Documents";
    static const automation::ClassInfo& describe();

    explicit Documents(Ref<Application> application) : application_(std::move(application)) {}

    /// A new document: "" for a blank drawing, "vss" for a blank stencil, a file for a copy of it, whose `Template` is
    /// the file.
    Ref<Document> add(StringView FileName) { return application_->add(FileName); }
    Ref<Application> application() { return application_; }
    std::int16_t count();
    /// The document at a position, or of a name or full name (without regard to case). Raises an error of Visio's when
    /// there is none.
    Ref<Document> item(const Variant& NameUIDOrIndex);
    /// The document of an ID. Raises "Invalid sheet identifier" when there is none.
    Ref<Document> itemFromId(std::int32_t nID);
    /// 11.
    std::int16_t objectType() { return 11; }
    /// Opens a drawing, stencil or template; one that is open already is given back as it is. Raises one error that
    /// says what is wrong with the file, and opens nothing then.
    Ref<Document> open(StringView FileName) { return application_->open(FileName); }
    std::unique_ptr<Enumerator> newEnum();

    std::size_t size() const { return application_->openDocuments().size(); }
    ObjectRef operator[](std::size_t position) const;

private:
    Ref<Application> application_;
};

} // namespace tarncom32::standin
