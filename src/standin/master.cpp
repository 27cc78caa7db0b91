#include "standin/master.h"

#include "standin/model/container_list.h"
#include "standin/model/drawing_operations.h"
#include "standin/shape.h"
#include "standin/shapes.h"
#include "standin/visio_error.h"

namespace tarncom32::standin {

const automation::ClassInfo& Master::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"A master, after which shapes are made.", Guid{}, "dee15225-4f08-4671-8bd4-38010ccb6d68"_guid,
        {
            member::get<&Master::application>(1, u"Application", {}, u"The application."),
            member::get<&Master::document>(2, u"Document", {}, u"The document."),
            member::method<&Master::drawRectangle>(3, u"DrawRectangle",
                                                   {in(u"xBegin"), in(u"yBegin"), in(u"xEnd"), in(u"yEnd")},
                                                   u"Draws a rectangle between two corners given in inches."),
            member::method<&Master::drop>(4, u"Drop", {in(u"ObjectToDrop"), in(u"xPos"), in(u"yPos")},
                                          u"Makes an instance of another master."),
            member::get<&Master::id>(5, u"ID", {}, u"The ID of the master in its document."),
            member::get<&Master::index>(6, u"Index", {}, u"The position among the masters, from 1."),
            member::get<&Master::name>(0, u"Name", {}, u"The local name."),
            member::let<&Master::setName>(0, u"Name", {in(u"lpLocaleSpecificName")}, u"The local name."),
            member::get<&Master::nameU>(7, u"NameU", {}, u"The universal name."),
            member::let<&Master::setNameU>(7, u"NameU", {in(u"lpLocaleIndependentName")}, u"The universal name."),
            member::get<&Master::objectType>(8, u"ObjectType", {}, u"The type of the object: 12."),
            member::get<&Master::pageSheet>(9, u"PageSheet", {}, u"The sheet of the master's page."),
            member::get<&Master::shapes>(10, u"Shapes", {}, u"The shapes at the top level of the master."),
            member::get<&Master::uniqueId>(11, u"UniqueID", {}, u"The master's GUID, as its file gives it."),
        });
    return info;
}

Container& Master::toDrop(const ObjectRef& object, const Document& document) {
    if (!object) throw Error(automation::errors::ObjectNotSet);
    const auto* master = dynamic_cast<const Master*>(object.get());
    if (!master || master->document_.get() != &document)
        throw visio_error::inappropriateTarget(u"only a master of the same document can be dropped");
    return master->container();
}

Ref<Shape> Master::drawRectangle(double xBegin, double yBegin, double xEnd, double yEnd) {
    return document_->objectOf(standin::drawRectangle({document_->model(), container()}, xBegin, yBegin, xEnd, yEnd));
}

Ref<Shape> Master::drop(const ObjectRef& ObjectToDrop, double xPos, double yPos) {
    return document_->objectOf(
        standin::drop({document_->model(), container()}, Master::toDrop(ObjectToDrop, *document_), xPos, yPos));
}

std::int32_t Master::id() {
    return static_cast<std::int32_t>(container().id);
}

std::int16_t Master::index() {
    return positionOf(document_->model().masters(), container());
}

String Master::name() {
    return container().name;
}

void Master::setName(StringView lpLocaleSpecificName) {
    rename(document_->model().masters(), container(), lpLocaleSpecificName, NameKind::Local);
    document_->model().changed = true;
}

String Master::nameU() {
    return container().nameU;
}

void Master::setNameU(StringView lpLocaleIndependentName) {
    rename(document_->model().masters(), container(), lpLocaleIndependentName, NameKind::Universal);
    document_->model().changed = true;
}

Ref<Shape> Master::pageSheet() {
    return document_->objectOf(*container().sheet);
}

Ref<Shapes> Master::shapes() {
    return automation::make<Shapes>(document_, container(), nullptr);
}

String Master::uniqueId() {
    return container().uniqueId;
}

} // namespace tarncom32::standin
