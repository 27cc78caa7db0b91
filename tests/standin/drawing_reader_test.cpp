#include "standin/drawing/drawing_reader.h"
#include "standin/drawing/names.h"
#include "standin/drawing_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarncom32::standin::drawing {
namespace {

using tests::change;
using tests::Parts;
using tests::smallDrawing;
using tests::visioPart;

constexpr const char* page1 = "visio/pages/page1.xml";

DrawingFile read(const Parts& parts) {
    return readDrawing(tests::zipped(parts), "test");
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
    EXPECT_TRUE(shape.sheet.name.present() && shape.sheet.name.empty());
    EXPECT_FALSE(shape.sheet.nameU.present());
    EXPECT_EQ(shape.sheet.uniqueId, u"{A}");
    EXPECT_EQ(shape.type, ShapeType::Group);
    EXPECT_EQ(shape.master, 2u);
    EXPECT_EQ(shape.masterShape, noId);
    EXPECT_EQ(shape.sheet.lineStyle, 3u);
    EXPECT_EQ(shape.sheet.fillStyle, noId);

    ASSERT_EQ(shape.sheet.cells.size(), 3u);
    EXPECT_EQ(shape.sheet.cell(u"PinX")->formula, u"Inh");
    EXPECT_EQ(shape.sheet.cell(u"PinX")->unit, u"IN");
    EXPECT_FALSE(shape.sheet.cell(u"PinX")->error.present());
    EXPECT_TRUE(shape.sheet.cell(u"LockX")->formula.present());
    EXPECT_FALSE(shape.sheet.cell(u"Bad")->formula.present());
    EXPECT_EQ(shape.sheet.cell(u"Bad")->error, u"#DIV/0!");

    const Section* user = shape.sheet.section(u"User");
    ASSERT_NE(user, nullptr);
    EXPECT_EQ(user->row(u"Version")->localName, u"Fassung");
    EXPECT_EQ(user->row(u"Version")->cell(u"Value")->value, u"Gü\U0001F600");
    EXPECT_TRUE(user->row(u"Old")->deleted);
    EXPECT_EQ(shape.sheet.section(u"Geometry", 0), nullptr);
    const Section* geometry = shape.sheet.section(u"Geometry", 1);
    ASSERT_NE(geometry, nullptr);
    EXPECT_EQ(geometry->cells.size(), 1u);
    EXPECT_EQ(geometry->rows[0].type, u"LineTo");
    EXPECT_EQ(geometry->rows[0].index, 2u);

    EXPECT_EQ(shape.text, u"abcd<\n");
    ASSERT_EQ(shape.fields.size(), 1u);
    EXPECT_EQ(shape.fields[0].offset, 1u);
    EXPECT_EQ(shape.fields[0].length, 2u);
    EXPECT_EQ(shape.fields[0].index, 3u);

    ASSERT_EQ(shape.shapes.size(), 2u);
    EXPECT_FALSE(shape.shapes[0].text.present());
    EXPECT_TRUE(shape.shapes[1].deleted);
    EXPECT_EQ(file.pages[0].contents.find(3), &shape.shapes[0]);
    EXPECT_EQ(file.pages[0].contents.find(2), nullptr);
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
    EXPECT_EQ(shapes[0].id, 1u);
    EXPECT_FALSE(shapes[0].sheet.name.present());
    ASSERT_EQ(shapes[0].sheet.cells.size(), 1u);
    EXPECT_EQ(shapes[0].sheet.cells[0].name, u"C");
    EXPECT_EQ(shapes[1].id, 3u);
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
    EXPECT_EQ(file.pages[0].name, u"Eins");
    EXPECT_EQ(file.pages[0].nameU, u"One");
    EXPECT_EQ(file.pages[0].backPage, 4u);
    EXPECT_EQ(file.pages[1].id, 9u);
    EXPECT_EQ(file.pages[1].nameU, u"Hinten");
    EXPECT_NE(file.pages[1].contents.find(77), nullptr);
    EXPECT_EQ(file.pages[2].id, 4u);
    EXPECT_EQ(file.page(9), &file.pages[1]);
}

TEST(DrawingReader, TellsTheKindByTheContentType) {
    const struct {
        const char* type;
        DocumentKind kind;
        bool macros;
    } rows[] = {
        {"drawing.main", DocumentKind::Drawing, false},
        {"stencil.main", DocumentKind::Stencil, false},
        {"template.main", DocumentKind::Template, false},
        {"stencil.macroEnabled.main", DocumentKind::Stencil, true},
        {"template.macroEnabled.main", DocumentKind::Template, true},
        {"drawing.macroEnabled.main", DocumentKind::Drawing, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type);
        Parts parts = smallDrawing();
        change(parts, "[Content_Types].xml", "drawing.main", row.type);
        const DrawingFile file = read(parts);
        EXPECT_EQ(file.kind, row.kind);
        EXPECT_EQ(file.macroEnabled, row.macros);
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
    EXPECT_EQ(file.sheet.section(u"User")->row(u"Version")->cell(u"Value")->value, u"1.4");
    ASSERT_NE(file.style(3), nullptr);
    EXPECT_EQ(file.style(3)->sheet.cells[0].name, u"LineWeight");
    EXPECT_EQ(file.style(3)->sheet.lineStyle, 0u);
    ASSERT_EQ(file.events.size(), 2u);
    EXPECT_EQ(file.events[0].id, 14u);
    EXPECT_EQ(file.events[0].eventCode, 2);
    EXPECT_TRUE(file.events[0].enabled);
    EXPECT_EQ(file.events[0].target, u"QueueMarkerEvent");
    EXPECT_EQ(file.events[0].targetArgs, u"/cmd=1");
    EXPECT_EQ(file.events[1].eventCode, -32766);
    EXPECT_FALSE(file.events[1].enabled);
}

TEST(DrawingNames, FallBackToTheMasterAndToSheet) {
    const struct {
        const char* attributes;
        std::u16string local, universal;
    } rows[] = {
        {"", u"Sheet.8", u"Sheet.8"},
        {"Master='2'", u"Rechner.8", u"PC.8"},
        {"Master='99'", u"Sheet.8", u"Sheet.8"},
        {"Name='Eigen' Master='2'", u"Eigen", u"Eigen"},
        {"Name='Eigen' NameU='Own'", u"Eigen", u"Own"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.attributes);
        const DrawingFile file = readShapes("<Shapes><Shape ID='8' " + std::string(row.attributes) + "/></Shapes>");
        const Shape& shape = file.pages[0].contents.shapes[0];
        EXPECT_EQ(localName(file, shape), row.local);
        EXPECT_EQ(universalName(file, shape), row.universal);
    }
}

TEST(DrawingNames, FindWhatAShapeInheritsFrom) {
    const DrawingFile file =
        readShapes("<Shapes><Shape ID='1' Master='4'><Shapes><Shape ID='2' MasterShape='6'><Shapes>"
                   "<Shape ID='3' MasterShape='7'/></Shapes></Shape><Shape ID='4' MasterShape='7' Master='2'/>"
                   "</Shapes></Shape><Shape ID='5' MasterShape='5'/></Shapes>");
    const Contents& page = file.pages[0].contents;
    const Master& pc = *file.master(2);
    const Master& desk = *file.master(4);

    const Prototype top = prototypeOf(file, *page.find(1), nullptr);
    EXPECT_EQ(top.shape, desk.contents.find(5));
    EXPECT_EQ(prototypeOf(file, *page.find(2), top.master).shape, desk.contents.find(6));
    EXPECT_EQ(prototypeOf(file, *page.find(3), top.master).shape, desk.contents.find(7));
    EXPECT_EQ(prototypeOf(file, *page.find(4), top.master).shape, pc.contents.find(5)) << "its own master wins";
    EXPECT_EQ(prototypeOf(file, *page.find(5), nullptr).shape, nullptr) << "no master around it";

    // Inside the master the PC's parts come from the PC, two masters away from the page.
    const Prototype inner = prototypeOf(file, *desk.contents.find(6), nullptr);
    EXPECT_EQ(inner.shape, pc.contents.find(5));
    EXPECT_EQ(prototypeOf(file, *desk.contents.find(7), inner.master).shape, pc.contents.find(7));
}

TEST(DrawingMemory, StaysWithinAKilobyteAShape) {
    std::string shapes = "<Shapes>";
    constexpr int count = 20000;
    for (int i = 1; i <= count; ++i) {
        shapes += tests::numbered("<Shape ID='#' NameU='Node #' Type='Shape' Master='2'>", i);
        for (const char* cell : {"PinX", "PinY", "Width", "Height", "LocPinX", "LocPinY", "Angle"})
            shapes.append("<Cell N='").append(cell).append(tests::numbered("' V='#.5' U='IN' F='Width*0.5'/>", i));
        shapes += "<Section N='User'><Row N='Application'><Cell N='Value' V='Office' U='STR'/></Row></Section></Shape>";
    }
    const DrawingFile file = readShapes(shapes + "</Shapes>");
    EXPECT_EQ(file.pages[0].contents.shapes.size(), static_cast<std::size_t>(count));
    EXPECT_LT(file.memory->used() / count, 1024u);
}

} // namespace
} // namespace tarncom32::standin::drawing
