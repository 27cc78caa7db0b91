#pragma once

#include "automation/members.h"
#include "standin/document.h"
#include "standin/model/sheet_cells.h"

namespace tarncom32::standin {

/// A shape; also the sheet of a page, of a master or of the document. The same shape gives the same object for as long
/// as somebody holds it.
class Shape final : public automation::Described<Shape> {
public:
    static constexpr StringView kClassName = u"Shape";
    static const automation::ClassInfo& describe();

    /// Made by `Document::objectOf`.
    Shape(Ref<Document> document, ShapeNode& node) : document_(std::move(document)), node_(node) {
        node_.object = this;
    }

    /// Adds a row of a name ("" for "Row_1", "Row_2" ...) to a section (242 user cells, 243 shape data ...), which is
    /// made where it is not there, and gives the row's position from 0. Raises when the row is there already or the
    /// section has no named rows. The tag means nothing in these sections.
    std::int16_t addNamedRow(std::int16_t Section, StringView RowName, std::int16_t RowTag);
    /// Makes an empty section and gives its constant. Raises when the shape has it.
    std::int16_t addSection(std::int16_t Section);
    Ref<Application> application() { return document_->application(); }
    /// -1 when the cell exists, else 0. `fExistsLocally`: nonzero for the shape's own cells only, 0 for inherited ones
    /// too. A row's local name serves as well as its universal one.
    std::int16_t cellExists(StringView localeSpecificCellName, std::int16_t fExistsLocally);
    /// The same by universal names only.
    std::int16_t cellExistsU(StringView localeIndependentCellName, std::int16_t fExistsLocally);
    /// The cell of a name, inherited or not. Raises "Unexpected end of file" when there is none.
    Ref<Cell> cells(StringView localeSpecificCellName);
    /// The same by universal names only.
    Ref<Cell> cellsU(StringView localeIndependentCellName);
    /// The Master or the Page around the shape; Nothing when it is in none.
    Ref<Master> containingMaster();
    Ref<Page> containingPage();
    /// The group around the shape, the sheet of the page for a shape at the top level, Nothing for a sheet.
    Ref<Shape> containingShape();
    /// Makes the shape a group, to which sub-shapes can be added.
    void convertToGroup();
    /// Takes the shape and what is in it out of the page.
    void deleteShape();
    Ref<Document> document() { return document_; }
    /// Draws a rectangle into the group (or on the page, for its sheet) between two corners given in inches.
    Ref<Shape> drawRectangle(double xBegin, double yBegin, double xEnd, double yEnd);
    /// Drops a master of the shape's document into the group.
    Ref<Shape> drop(const ObjectRef& ObjectToDrop, double xPos, double yPos);
    /// Unique in the page or master; 0 for a sheet.
    std::int32_t id();
    /// The position among the shapes beside it, from 1; 0 for a sheet.
    std::int32_t index();
    /// The master that the shape is an instance of; Nothing for other shapes.
    Ref<Master> master();
    /// The local name: "Sheet.5", "Router.12" unless it was given another. The first new name becomes the universal
    /// one too. Raises when a shape beside it has it.
    String name();
    void setName(StringView lpLocaleSpecificName);
    /// "Sheet." and the ID.
    String nameId();
    /// The universal name.
    String nameU();
    void setNameU(StringView lpLocaleIndependentName);
    /// 17.
    std::int16_t objectType() { return 17; }
    /// The group around the shape, else the Page or Master it is on; the Document for the document's sheet.
    ObjectRef parent();
    /// The number of rows of a section, inherited ones included; 0 for one that is not there.
    std::int16_t rowCount(std::int16_t Section);
    /// -1 when the section exists, else 0; `fExistsLocally` as with `cellExists`.
    std::int16_t sectionExists(std::int16_t Section, std::int16_t fExistsLocally);
    /// The shapes in the group; none for other shapes, those of the page or master for its sheet.
    Ref<Shapes> shapes();
    /// The text, fields shown as their values.
    String text();
    void setText(StringView lpText);
    /// 1 page, 2 group, 3 shape, 4 foreign object, 5 guide, 6 document.
    std::int16_t type();
    /// The shape's GUID. `fUniqueID`: 0 gives it ("" for none), 1 makes one where there is none, 2 takes it away and
    /// gives "". Raises "Invalid parameter" for others.
    String uniqueId(std::int16_t fUniqueID);

private:
    ~Shape() override { node_.object = nullptr; }
    /// The shape's data. Raises once the shape was deleted or the document was closed.
    ShapeNode& live() const;
    /// The same, if shapes can be added to it.
    ShapeNode& liveGroup() const;
    std::optional<FoundCell> find(StringView cellName, NameKind names, Reach reach) const;
    Ref<Cell> cellOf(StringView cellName, NameKind names);

    Ref<Document> document_;
    ShapeNode& node_;
};

} // namespace tarncom32::standin
