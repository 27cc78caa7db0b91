#include "standin/drawing/drawing_reader.h"
#include "standin/drawing_package.h"

#include <gmock/gmock.h>

namespace tarncom32::standin::drawing {
namespace {

using namespace tests;
using testing::FieldsAre;

DrawingFile read(const Parts& parts) {
    return readDrawing(zipped(parts), "test");
}

// The small drawing with these shapes on its first page.
DrawingFile readShapes(std::string_view shapes) {
    Parts parts = smallDrawing();
    parts[page1] = visioPart("PageContents", shapes);
    return read(parts);
}

TEST(DrawingReader, KeepsWhatTheFileSaysAboutAShape) {
    const DrawingFile file = readShapes(
        "<Shapes><Shape ID='1' Name='' UniqueID='{A}' Type='Group' Master='2' LineStyle='3'>"
        "<Cell N='PinX' V='1.5' U='IN' F='Inh'/><Cell N='LockX' V='' F=''/><Cell N='Bad' V='2' E='#DIV/0!'/>"
        "<Section N='User'><Row N='Version' LocalName='Fassung'><Cell N='Value' V='G\xC3\xBC&#x1F600;' U='STR'/></Row>"
        "<Row N='Old' Del='1'/></Section>"
        "<Section N='Geometry' IX='1'><Cell N='NoFill' V='1'/><Row T='LineTo' IX='2'/></Section>"
        "<Text><cp IX='0'/>a<fld IX='3'>bc</fld>d<![CDATA[<]]>\n</Text>"
        "<Shapes><Shape ID='3' MasterShape='7'/><Shape Del='1' MasterShape='6'/></Shapes></Shape></Shapes>");
    ASSERT_EQ(file.pages.size(), 2u);
    ASSERT_EQ(file.pages[0].contents.shapes.size(), 1u);
    const Shape& shape = file.pages[0].contents.shapes[0];
    EXPECT_TRUE(shape.sheet.name.present() && shape.sheet.name.empty() && !shape.sheet.nameU.present());
    EXPECT_EQ(shape.sheet.uniqueId, u"{A}");
    EXPECT_EQ(shape.type, ShapeType::Group);
    EXPECT_THAT(std::tuple(shape.master, shape.masterShape), FieldsAre(2u, noId));
    EXPECT_THAT(std::tuple(shape.sheet.lineStyle, shape.sheet.fillStyle), FieldsAre(3u, noId));

    ASSERT_EQ(shape.sheet.cells.size(), 3u);
    const auto& [pinX, lock, bad] = std::tie(shape.sheet.cells[0], shape.sheet.cells[1], shape.sheet.cells[2]);
    EXPECT_TRUE(pinX.name == u"PinX" && pinX.formula == u"Inh" && pinX.unit == u"IN" && !pinX.error.present());
    EXPECT_TRUE(lock.formula.present() && !bad.formula.present());
    EXPECT_EQ(bad.error, u"#DIV/0!");

    ASSERT_EQ(shape.sheet.sections.size(), 2u);
    const auto& [user, geometry] = std::tie(shape.sheet.sections[0], shape.sheet.sections[1]);
    ASSERT_EQ(user.rows.size(), 2u);
    EXPECT_TRUE(user.rows[0].name == u"Version" && user.rows[0].localName == u"Fassung");
    EXPECT_EQ(user.rows[0].cells[0].value, u"Gü\U0001F600");
    EXPECT_TRUE(user.rows[1].deleted);
    EXPECT_TRUE(geometry.name == u"Geometry" && geometry.index == 1u && geometry.cells.size() == 1u);
    EXPECT_TRUE(geometry.rows[0].type == u"LineTo" && geometry.rows[0].index == 2u);

    EXPECT_EQ(shape.text, u"abcd<\n");
    ASSERT_EQ(shape.fields.size(), 1u);
    const auto& field = shape.fields[0];
    EXPECT_THAT(std::tuple(field.offset, field.length, field.index), FieldsAre(1u, 2u, 3u));

    ASSERT_EQ(shape.shapes.size(), 2u);
    EXPECT_FALSE(shape.shapes[0].text.present());
    EXPECT_TRUE(shape.shapes[1].deleted);
    const auto byId = file.pages[0].contents.byId;
    ASSERT_EQ(byId.size(), 2u);
    EXPECT_TRUE(byId[0].id == 1u && byId[1].id == 3u && byId[1].shape == &shape.shapes[0]);
}

TEST(DrawingReader, GoesByNamespacesAndPassesOverTheUnknown) {
    Parts parts = smallDrawing();
    parts[page1] = "<p:PageContents xmlns:p='http://schemas.microsoft.com/office/visio/2012/main' xmlns:o='urn:other'>"
                   "<o:Shapes><p:Shape ID='8'/></o:Shapes><p:Novelty><p:Shapes><p:Shape ID='9'/></p:Shapes></p:Novelty>"
                   "<p:Shapes><o:Shape ID='7'/><p:Shape ID='1' o:ID='2' o:Name='x' New='y'><p:Novelty><p:Cell N='A'/>"
                   "</p:Novelty><!-- <p:Cell N='B'/> --><p:Cell N='C'><p:RefBy T='Page'/></p:Cell></p:Shape>"
                   "<p:Shape ID='3'/></p:Shapes></p:PageContents>";
    const DrawingFile file = read(parts);
    const auto shapes = file.pages[0].contents.shapes;
    ASSERT_EQ(shapes.size(), 2u);
    EXPECT_THAT(std::tuple(shapes[0].id, shapes[1].id), FieldsAre(1u, 3u));
    EXPECT_FALSE(shapes[0].sheet.name.present());
    ASSERT_EQ(shapes[0].sheet.cells.size(), 1u);
    EXPECT_EQ(shapes[0].sheet.cells[0].name, u"C");
}

TEST(DrawingReader, PutsBackgroundPagesLast) {
    Parts parts = smallDrawing();
    change(parts, "visio/pages/pages.xml", "<Page ID='0'",
           "<Page ID='9' Name='Hinten' Background='1'><Rel r:id='rId3'/></Page><Page ID='0'");
    change(parts, "visio/pages/_rels/pages.xml.rels", "</Relationships>",
           "<Relationship Id='rId3' Type='http://schemas.microsoft.com/visio/2010/relationships/page' "
           "Target='/visio/PAGES/page%33.xml'/></Relationships>");
    parts["visio/pages/page3.xml"] = visioPart("PageContents", "<Shapes><Shape ID='77'/></Shapes>");
    const DrawingFile file = read(parts);
    ASSERT_EQ(file.pages.size(), 3u);
    EXPECT_TRUE(file.pages[0].name == u"Eins" && file.pages[0].nameU == u"One" && file.pages[0].backPage == 4u);
    EXPECT_TRUE(file.pages[1].id == 9u && file.pages[1].nameU == u"Hinten" &&
                file.pages[1].contents.shapes[0].id == 77u);
    EXPECT_EQ(file.pages[2].id, 4u);
}

TEST(DrawingReader, TellsTheKindByTheContentType) {
    for (const auto& [type, kind, macros] : {std::tuple("drawing.main", DocumentKind::Drawing, false),
                                             std::tuple("stencil.main", DocumentKind::Stencil, false),
                                             std::tuple("template.macroEnabled.main", DocumentKind::Template, true)}) {
        Parts parts = smallDrawing();
        change(parts, "[Content_Types].xml", "drawing.main", type);
        const DrawingFile file = read(parts);
        EXPECT_THAT(std::tuple(file.kind, file.macroEnabled), FieldsAre(kind, macros)) << type;
    }
}

TEST(DrawingReader, ReadsTheDocumentsSheetStylesAndEvents) {
    Parts parts = smallDrawing();
    change(
        parts, "visio/document.xml", "<DocumentSheet NameU='TheDoc'/>",
        "<StyleSheets><StyleSheet ID='3' NameU='Normal' LineStyle='0'><Cell N='LineWeight' V='1'/></StyleSheet>"
        "</StyleSheets><DocumentSheet NameU='TheDoc'><Section N='User'><Row N='Version'><Cell N='Value' V='1.4' "
        "U='STR'/></Row></Section></DocumentSheet><EventList><EventItem ID='14' EventCode='2' Action='1' Enabled='1' "
        "Target='QueueMarkerEvent' TargetArgs='/cmd=1'/><EventItem ID='15' EventCode='-32766'/></EventList>");
    const DrawingFile file = read(parts);
    EXPECT_EQ(file.sheet.sections[0].rows[0].cells[0].value, u"1.4");
    ASSERT_EQ(file.styles.size(), 1u);
    const StyleSheet& style = file.styles[0];
    EXPECT_TRUE(style.id == 3u && style.sheet.cells[0].name == u"LineWeight" && style.sheet.lineStyle == 0u);
    ASSERT_EQ(file.events.size(), 2u);
    const auto& [marker, other] = std::tie(file.events[0], file.events[1]);
    EXPECT_TRUE(marker.target == u"QueueMarkerEvent" && marker.targetArgs == u"/cmd=1");
    EXPECT_THAT(std::tuple(marker.id, marker.eventCode, marker.enabled), FieldsAre(14u, 2, true));
    EXPECT_THAT(std::tuple(other.eventCode, other.enabled), FieldsAre(-32766, false));
}

TEST(DrawingMemory, StaysWithinAKilobyteAShape) {
    std::string shapes = "<Shapes>";
    constexpr int count = 20000;
    for (int i = 1; i <= count; ++i) {
        shapes += numbered("<Shape ID='#' NameU='Node #' Type='Shape' Master='2'>", i);
        for (const char* cell : {"PinX", "PinY", "Width", "Height", "LocPinX", "LocPinY", "Angle"})
            shapes.append("<Cell N='").append(cell).append(numbered("' V='#.5' U='IN' F='Width*0.5'/>", i));
        shapes += "<Section N='User'><Row N='Application'><Cell N='Value' V='Office' U='STR'/></Row></Section></Shape>";
    }
    const DrawingFile file = readShapes(shapes + "</Shapes>");
    EXPECT_EQ(file.pages[0].contents.shapes.size(), static_cast<std::size_t>(count));
    EXPECT_LT(file.memory->used() / count, 1024u);
}

} // namespace
} // namespace tarncom32::standin::drawing
