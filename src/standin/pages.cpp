#include "standin/pages.h"

#include "automation/collection.h"
#include "automation/convert.h"
#include "standin/model/container_list.h"
#include "standin/page.h"

namespace tarncom32::standin {

const automation::ClassInfo& Pages::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"The pages of a document.", Guid{}, "bc169725-82bd-4326-92c5-ebd3756357d8"_guid,
        {
            member::method<&Pages::add>(1, u"Add", {}, u"Adds a foreground page behind the others."),
            member::get<&Pages::application>(2, u"Application", {}, u"The application."),
            member::get<&Pages::count>(3, u"Count", {}, u"The number of pages."),
            member::get<&Pages::document>(4, u"Document", {}, u"The document."),
            member::get<&Pages::item>(0, u"Item", {in(u"NameUIDOrIndex")}, u"A page by position or local name."),
            member::get<&Pages::itemU>(5, u"ItemU", {in(u"NameUIDOrIndex")}, u"A page by position or universal name."),
            member::get<&Pages::itemFromId>(6, u"ItemFromID", {in(u"nID")}, u"A page by its ID."),
            member::get<&Pages::objectType>(7, u"ObjectType", {}, u"The type of the object: 15."),
            member::newEnum<&Pages::newEnum>(),
        });
    return info;
}

Ref<Page> Pages::add() {
    DocumentModel& model = document_->model();
    return document_->pageObject(model.addPage(freeName(model.pages(), u"Page-", static_cast<long long>(size()) + 1)));
}

std::int16_t Pages::count() {
    return automation::roundToInteger(static_cast<double>(size()));
}

Ref<Page> Pages::item(const Variant& NameUIDOrIndex) {
    return document_->pageObject(itemOf(document_->model().pages(), NameUIDOrIndex, NameKind::Local));
}

Ref<Page> Pages::itemU(const Variant& NameUIDOrIndex) {
    return document_->pageObject(itemOf(document_->model().pages(), NameUIDOrIndex, NameKind::Universal));
}

Ref<Page> Pages::itemFromId(std::int32_t nID) {
    return document_->pageObject(standin::itemFromId(document_->model().pages(), nID));
}

std::unique_ptr<Enumerator> Pages::newEnum() {
    return std::make_unique<automation::ListEnumerator<Pages>>(Ref<Pages>(this));
}

ObjectRef Pages::operator[](std::size_t position) const {
    return document_->pageObject(*document_->model().pages()[position]);
}

} // namespace tarncom32::standin
