#include "standin/documents.h"

#include "automation/collection.h"
#include "automation/convert.h"
#include "standin/document.h"
#include "standin/visio_error.h"

namespace tarncom32::standin {

using automation::equalsIgnoreCase;

const automation::ClassInfo& Documents::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"The open documents.", Guid{}, "7d2dc647-e9d0-4697-a996-c8af597752df"_guid,
        {
            member::method<&Documents::add>(1, u"Add", {in(u"FileName")}, u"Adds a document, blank or after a file."),
            member::get<&Documents::application>(2, u"Application", {}, u"The application."),
            member::get<&Documents::count>(3, u"Count", {}, u"The number of open documents."),
            member::get<&Documents::item>(0, u"Item", {in(u"NameUIDOrIndex")}, u"A document by position or name."),
            member::get<&Documents::itemFromId>(4, u"ItemFromID", {in(u"nID")}, u"A document by its ID."),
            member::get<&Documents::objectType>(5, u"ObjectType", {}, u"The type of the object: 11."),
            member::method<&Documents::open>(6, u"Open", {in(u"FileName")}, u"Opens a file."),
            member::newEnum<&Documents::newEnum>(),
        });
    return info;
}

std::int16_t Documents::count() {
    return automation::roundToInteger(static_cast<double>(size()));
}

Ref<Document> Documents::item(const Variant& NameUIDOrIndex) {
    const auto& documents = application_->openDocuments();
    if (const auto* name = NameUIDOrIndex.as<String>()) {
        for (const Ref<Document>& document : documents)
            if (equalsIgnoreCase(document->name(), *name) || equalsIgnoreCase(document->fullName(), *name))
                return document;
        throw visio_error::objectNameNotFound();
    }
    const std::int32_t position = automation::toLong(NameUIDOrIndex);
    if (position < 1 || static_cast<std::size_t>(position) > documents.size()) throw visio_error::positionOutOfRange();
    return documents[static_cast<std::size_t>(position) - 1];
}

Ref<Document> Documents::itemFromId(std::int32_t nID) {
    for (const Ref<Document>& document : application_->openDocuments())
        if (document->id() == nID) return document;
    throw visio_error::invalidSheetIdentifier();
}

std::unique_ptr<Enumerator> Documents::newEnum() {
    return std::make_unique<automation::ListEnumerator<Documents>>(Ref<Documents>(this));
}

ObjectRef Documents::operator[](std::size_t position) const {
    return application_->openDocuments()[position];
}

} // namespace tarncom32::standin
