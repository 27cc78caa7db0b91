#include "standin/cell.h"
#include "standin/master.h"
#include "standin/page.h"
#include "standin/shape.h"
#include "standin/shapes.h"

namespace tarncom32::standin {

const automation::ClassInfo& Shape::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"A shape, or the sheet of a page, a master or a document.", Guid{},
        "8570744b-0c5f-4c37-a517-9dea78ecaa73"_guid,
        {
            member::method<&Shape::addNamedRow>(1, u"AddNamedRow", {in(u"Section"), in(u"RowName"), in(u"RowTag")},
                                                u"Adds a named row to a section and returns its position."),
            member::method<&Shape::addSection>(2, u"AddSection", {in(u"Section")}, u"Adds a section."),
            member::get<&Shape::application>(3, u"Application", {}, u"The application."),
            member::get<&Shape::cellExists>(4, u"CellExists", {in(u"localeSpecificCellName"), in(u"fExistsLocally")},
                                            u"-1 when the cell exists, locally or at all, else 0."),
            member::get<&Shape::cellExistsU>(5, u"CellExistsU",
                                             {in(u"localeIndependentCellName"), in(u"fExistsLocally")},
                                             u"-1 when the cell of that universal name exists, else 0."),
            member::get<&Shape::cells>(6, u"Cells", {in(u"localeSpecificCellName")}, u"The cell of a name."),
            member::get<&Shape::cellsU>(7, u"CellsU", {in(u"localeIndependentCellName")},
                                        u"The cell of a universal name."),
            member::get<&Shape::containingMaster>(8, u"ContainingMaster", {}, u"The master that the shape is in."),
            member::get<&Shape::containingPage>(9, u"ContainingPage", {}, u"The page that the shape is on."),
            member::get<&Shape::containingShape>(10, u"ContainingShape", {}, u"The group or sheet around the shape."),
            member::method<&Shape::convertToGroup>(11, u"ConvertToGroup", {}, u"Makes the shape a group."),
            member::method<&Shape::deleteShape>(12, u"Delete", {}, u"Deletes the shape."),
            member::get<&Shape::document>(13, u"Document", {}, u"The document."),
            member::method<&Shape::drawRectangle>(14, u"DrawRectangle",
                                                  {in(u"xBegin"), in(u"yBegin"), in(u"xEnd"), in(u"yEnd")},
                                                  u"Draws a rectangle into the group."),
            member::method<&Shape::drop>(15, u"Drop", {in(u"ObjectToDrop"), in(u"xPos"), in(u"yPos")},
                                         u"Makes an instance of a master in the group."),
            member::get<&Shape::id>(16, u"ID", {}, u"The ID of the shape in its page or master."),
            member::get<&Shape::index>(17, u"Index", {}, u"The position among the shapes beside it, from 1."),
            member::get<&Shape::master>(18, u"Master", {}, u"The master that the shape is an instance of."),
            member::get<&Shape::name>(0, u"Name", {}, u"The local name."),
            member::let<&Shape::setName>(0, u"Name", {in(u"lpLocaleSpecificName")}, u"The local name."),
            member::get<&Shape::nameId>(19, u"NameID", {}, u"\"Sheet.\" and the ID."),
            member::get<&Shape::nameU>(20, u"NameU", {}, u"The universal name."),
            member::let<&Shape::setNameU>(20, u"NameU", {in(u"lpLocaleIndependentName")}, u"The universal name."),
            member::get<&Shape::objectType>(21, u"ObjectType", {}, u"The type of the object: 17."),
            member::get<&Shape::parent>(22, u"Parent", {}, u"The group, page, master or document around the shape."),
            member::get<&Shape::rowCount>(23, u"RowCount", {in(u"Section")}, u"The number of rows of a section."),
            member::get<&Shape::sectionExists>(24, u"SectionExists", {in(u"Section"), in(u"fExistsLocally")},
                                               u"-1 when the section exists, locally or at all, else 0."),
            member::get<&Shape::shapes>(25, u"Shapes", {}, u"The shapes in the group."),
            member::get<&Shape::text>(26, u"Text", {}, u"The text."),
            member::let<&Shape::setText>(26, u"Text", {in(u"lpText")}, u"The text."),
            member::get<&Shape::type>(27, u"Type", {}, u"1 page, 2 group, 3 shape, 4 foreign, 5 guide, 6 document."),
            member::get<&Shape::uniqueId>(28, u"UniqueID", {in(u"fUniqueID")}, u"Gets, makes or deletes the GUID."),
        });
    return info;
}

} // namespace tarncom32::standin
