#include "standin/masters.h"

#include "automation/collection.h"
#include "automation/convert.h"
#include "standin/master.h"
#include "standin/model/container_list.h"

namespace tarncom32::standin {

const automation::ClassInfo& Masters::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"The masters of a document's own stencil.", Guid{}, "d8e43f73-a935-4cc5-ae6b-500849844fb6"_guid,
        {
            member::method<&Masters::add>(1, u"Add", {}, u"Adds a master without a shape."),
            member::get<&Masters::application>(2, u"Application", {}, u"The application."),
            member::get<&Masters::count>(3, u"Count", {}, u"The number of masters."),
            member::get<&Masters::document>(4, u"Document", {}, u"The document."),
            member::get<&Masters::item>(0, u"Item", {in(u"NameUIDOrIndex")}, u"A master by position or local name."),
            member::get<&Masters::itemU>(5, u"ItemU", {in(u"NameUIDOrIndex")},
                                         u"A master by position or universal name."),
            member::get<&Masters::itemFromId>(6, u"ItemFromID", {in(u"nID")}, u"A master by its ID."),
            member::get<&Masters::objectType>(7, u"ObjectType", {}, u"The type of the object: 13."),
            member::newEnum<&Masters::newEnum>(),
        });
    return info;
}

Ref<Master> Masters::add() {
    DocumentModel& model = document_->model();
    return document_->masterObject(
        model.addMaster(freeName(model.masters(), u"Master.", static_cast<long long>(size()))));
}

std::int16_t Masters::count() {
    return automation::roundToInteger(static_cast<double>(size()));
}

Ref<Master> Masters::item(const Variant& NameUIDOrIndex) {
    return document_->masterObject(itemOf(document_->model().masters(), NameUIDOrIndex, NameKind::Local));
}

Ref<Master> Masters::itemU(const Variant& NameUIDOrIndex) {
    return document_->masterObject(itemOf(document_->model().masters(), NameUIDOrIndex, NameKind::Universal));
}

Ref<Master> Masters::itemFromId(std::int32_t nID) {
    return document_->masterObject(standin::itemFromId(document_->model().masters(), nID));
}

std::unique_ptr<Enumerator> Masters::newEnum() {
    return std::make_unique<automation::ListEnumerator<Masters>>(Ref<Masters>(this));
}

ObjectRef Masters::operator[](std::size_t position) const {
    return document_->masterObject(*document_->model().masters()[position]);
}

} // namespace tarncom32::standin
