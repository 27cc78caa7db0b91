#include "standin/page.h"

#include "standin/master.h"
#include "standin/model/container_list.h"
#include "standin/model/drawing_operations.h"
#include "standin/shape.h"
#include "standin/shapes.h"
#include "standin/visio_error.h"

namespace tarncom32::standin {

const automation::ClassInfo& Page::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"A page of a document.", Guid{}, "81ae33f8-7c86-47e8-a76d-d89e12cdc452"_guid,
        {
            member::get<&Page::application>(1, u"Application", {}, u"The application."),
            member::get<&Page::background>(2, u"Background", {}, u"Whether the page is a background page."),
            member::method<&Page::deletePage>(3, u"Delete", {in(u"fRenumberPages")}, u"Deletes the page."),
            member::get<&Page::document>(4, u"Document", {}, u"The document."),
            member::method<&Page::drawRectangle>(5, u"DrawRectangle",
                                                 {in(u"xBegin"), in(u"yBegin"), in(u"xEnd"), in(u"yEnd")},
                                                 u"Draws a rectangle between two corners given in inches."),
            member::method<&Page::drop>(6, u"Drop", {in(u"ObjectToDrop"), in(u"xPos"), in(u"yPos")},
                                        u"Makes an instance of a master."),
            member::get<&Page::id>(7, u"ID", {}, u"The ID of the page in its document."),
            member::get<&Page::index>(8, u"Index", {}, u"The position among the pages, from 1."),
            member::get<&Page::name>(0, u"Name", {}, u"The local name."),
            member::let<&Page::setName>(0, u"Name", {in(u"lpLocaleSpecificName")}, u"The local name."),
            member::get<&Page::nameU>(9, u"NameU", {}, u"The universal name."),
            member::let<&Page::setNameU>(9, u"NameU", {in(u"lpLocaleIndependentName")}, u"The universal name."),
            member::get<&Page::objectType>(10, u"ObjectType", {}, u"The type of the object: 14."),
            member::get<&Page::pageSheet>(11, u"PageSheet", {}, u"The sheet of the page."),
            member::get<&Page::shapes>(12, u"Shapes", {}, u"The shapes at the top level of the page."),
            member::get<&Page::type>(13, u"Type", {}, u"1 foreground page, 2 background page."),
        });
    return info;
}

Container& Page::live() const {
    document_->requireOpen();
    if (page_.deleted) throw visio_error::inappropriateSource(u"the page has been deleted");
    return page_;
}

std::int16_t Page::background() {
    return live().background ? -1 : 0;
}

void Page::deletePage(std::int16_t fRenumberPages) {
    DocumentModel& model = document_->model();
    if (model.pages().size() == 1) throw visio_error::presentlyDisabled(u"a document keeps its last page");
    model.removePage(live());
    if (fRenumberPages == 0) return;
    long long number = 0;
    for (Container* page : model.pages()) {
        ++number;
        if (!page->renamed && page->name.starts_with(u"Page-"))
            page->name = page->nameU = u"Page-" + automation::decimalText(number);
    }
}

Ref<Shape> Page::drawRectangle(double xBegin, double yBegin, double xEnd, double yEnd) {
    return document_->objectOf(standin::drawRectangle({document_->model(), live()}, xBegin, yBegin, xEnd, yEnd));
}

Ref<Shape> Page::drop(const ObjectRef& ObjectToDrop, double xPos, double yPos) {
    return document_->objectOf(
        standin::drop({document_->model(), live()}, Master::toDrop(ObjectToDrop, *document_), xPos, yPos));
}

std::int32_t Page::id() {
    return static_cast<std::int32_t>(live().id);
}

std::int16_t Page::index() {
    return positionOf(document_->model().pages(), live());
}

String Page::name() {
    return live().name;
}

void Page::setName(StringView lpLocaleSpecificName) {
    rename(document_->model().pages(), live(), lpLocaleSpecificName, NameKind::Local);
    document_->model().changed = true;
}

String Page::nameU() {
    return live().nameU;
}

void Page::setNameU(StringView lpLocaleIndependentName) {
    rename(document_->model().pages(), live(), lpLocaleIndependentName, NameKind::Universal);
    document_->model().changed = true;
}

Ref<Shape> Page::pageSheet() {
    return document_->objectOf(*live().sheet);
}

Ref<Shapes> Page::shapes() {
    return automation::make<Shapes>(document_, live(), nullptr);
}

std::int16_t Page::type() {
    return live().background ? 2 : 1;
}

} // namespace tarncom32::standin
