#include "automation/collection.h"
#include "standin/object_model.h"

namespace tarncom32::standin {
namespace {

using namespace tests;

class ObjectModelShapes : public DrawingTest {};

TEST_F(ObjectModelShapes, GroupsHoldShapesInDrawingOrder) {
    EXPECT_EQ(get(drawing.document, u"Saved"), "True");
    const ObjectRef group = drawing.group();
    EXPECT_EQ(get(drawing.document, u"Saved"), "False");
    const ObjectRef inner = drawing.group(group);
    const ObjectRef leaf = drawing.square(inner);
    drawing.square();
    std::string walked;
    automation::forEach(*drawing.shapes(),
                        [&](const Variant& shape) { walked += get(objectIn(shape), u"NameID") + " "; });
    EXPECT_EQ(walked, "Sheet.1 Sheet.4 ");
    EXPECT_EQ(get(objectIn(group->get(u"Shapes")), u"Count"), "1");
    EXPECT_EQ(get(objectIn(leaf->get(u"Shapes")), u"Count"), "0");
    EXPECT_EQ(objectIn(leaf->get(u"Parent")), inner) << "a shape is one object while it is held";
    EXPECT_EQ(objectIn(objectIn(leaf->get(u"Cells", u"PinX"))->get(u"Shape")), leaf);
    EXPECT_EQ(objectIn(group->get(u"Parent")), drawing.page);
    EXPECT_EQ(objectIn(drawing.page->get(u"Document")), drawing.document);
    EXPECT_EQ(objectIn(leaf->get(u"Application")), ObjectRef(drawing.application));
    EXPECT_EQ(objectIn(objectIn(group->get(u"ContainingShape"))), objectIn(drawing.page->get(u"PageSheet")));
    EXPECT_EQ(objectIn(leaf->get(u"ContainingPage")), drawing.page);
    EXPECT_EQ(objectIn(leaf->get(u"ContainingMaster")), nullptr);
    EXPECT_EQ(get(group, u"Type") + get(leaf, u"Type"), "23");
    EXPECT_EQ(failureOf([&] { drawing.square(leaf); }),
              "-2032465763 Inappropriate source object for this action (the shape is no group)");
    // A name finds shapes of the whole page through any of its collections.
    EXPECT_EQ(itemOf(group, u"Shapes", u"Sheet.4"), drawing.shape(2));
    EXPECT_EQ(drawing.shape(u"sheet.3"), leaf);
}

TEST_F(ObjectModelShapes, SheetsAreShapesWithoutShapesAround) {
    const ObjectRef page = objectIn(drawing.page->get(u"PageSheet"));
    const ObjectRef document = objectIn(drawing.document->get(u"DocumentSheet"));
    EXPECT_EQ(get(page, u"Name") + get(page, u"Type"), "ThePage1");
    EXPECT_EQ(get(document, u"Name") + get(document, u"Type"), "TheDoc6");
    EXPECT_EQ(drawing.shape(u"ThePage"), page);
    EXPECT_EQ(objectIn(page->get(u"Parent")), drawing.page);
    EXPECT_EQ(objectIn(document->get(u"Parent")), drawing.document);
    EXPECT_NE(failureOf([&] { page->call(u"Delete"); }), "");
    EXPECT_EQ(objectIn(page->get(u"ContainingShape")), nullptr);
    EXPECT_NE(failureOf([&] { document->put(u"Name", u"x"); }), "");
}

TEST_F(ObjectModelShapes, NamesFollowTheFirstRename) {
    const ObjectRef shape = drawing.square();
    const ObjectRef other = drawing.square(drawing.group());
    EXPECT_EQ(drawing.shape(u"Sheet.1"), shape); // from here on the index is kept up to date
    shape->put(u"Name", u"Box");
    EXPECT_EQ(get(shape, u"NameU"), "Box");
    shape->put(u"Name", u"Kiste");
    EXPECT_EQ(get(shape, u"Name") + " " + get(shape, u"NameU") + " " + get(shape, u"NameID"), "Kiste Box Sheet.1");
    EXPECT_EQ(drawing.shape(u"KISTE"), shape);
    EXPECT_EQ(objectIn(drawing.shapes()->call(u"ItemU", u"Box")), shape);
    EXPECT_EQ(failureOf([&] { drawing.shape(u"Box"); }), "-2032465660 Object name not found");
    EXPECT_EQ(drawing.shape(u"Sheet.1"), shape) << "command lines name shapes by their IDs";
    EXPECT_EQ(failureOf([&] { drawing.square()->put(u"Name", u"kiste"); }),
              "-2147024809 The name 'kiste' is already in use.");
    EXPECT_NE(failureOf([&] { other->put(u"Name", u""); }), "");
    other->put(u"NameU", u"Fach");
    EXPECT_EQ(get(other, u"Name"), "Fach");

    // Groups may use a name again; each collection finds its own shape first.
    other->put(u"Name", u"Kiste");
    EXPECT_EQ(drawing.shape(u"Kiste"), shape);
    EXPECT_EQ(objectIn(objectIn(objectIn(other->get(u"Parent"))->get(u"Shapes"))->call(u"Item", u"Kiste")), other);
    shape->call(u"Delete");
    EXPECT_EQ(drawing.shape(u"Kiste"), other);
}

TEST_F(ObjectModelShapes, TheSecondOfTwoSiblingsOfOneNameIsFoundWhenTheFirstIsGone) {
    Parts parts = smallDrawing(); // a drawing from elsewhere: Visio gives no such names
    change(parts, page1, "<Shape ID='1' Type='Shape'/>",
           "<Shape ID='1' Name='A'/><Shape ID='2' Name='G' Type='Group'><Shapes><Shape ID='3' Name='A'/>"
           "<Shape ID='4' Name='A'/></Shapes></Shape>");
    const TemporaryFile file(parts);
    const auto application = startApplication();
    const ObjectRef group = itemOf(itemOf(open(application, file.path()), u"Pages", 1), u"Shapes", u"G");
    for (const char* id : {"3", "4", "1"}) {
        const ObjectRef shape = itemOf(group, u"Shapes", u"A");
        EXPECT_EQ(get(shape, u"ID"), id);
        shape->call(u"Delete");
    }
}

TEST_F(ObjectModelShapes, DeletionTakesWhatIsInside) {
    const ObjectRef group = drawing.group();
    const ObjectRef leaf = drawing.square(group);
    const ObjectRef shapes = objectIn(group->get(u"Shapes"));
    group->call(u"Delete");
    const std::string deleted = "-2032465763 Inappropriate source object for this action (the shape has been deleted)";
    EXPECT_EQ(failureOf([&] { leaf->get(u"Text"); }), deleted);
    EXPECT_EQ(failureOf([&] { group->call(u"Delete"); }), deleted);
    EXPECT_NE(failureOf([&] { shapes->get(u"Count"); }), "");
    EXPECT_EQ(get(drawing.shapes(), u"Count"), "0");
    EXPECT_EQ(failureOf([&] { drawing.shape(u"Sheet.2"); }), "-2032465660 Object name not found");
    EXPECT_EQ(get(drawing.square(), u"ID"), "1") << "the IDs of deleted shapes are used again";
}

TEST_F(ObjectModelShapes, GuidsAreMadeOnDemandAndFound) {
    const ObjectRef group = drawing.group();
    const ObjectRef leaf = drawing.square(group);
    EXPECT_EQ(textIn(leaf->get(u"UniqueID", 0)), "");
    const String guid = *leaf->get(u"UniqueID", 1).as<String>();
    EXPECT_EQ(guid.size(), 38U);
    EXPECT_EQ(leaf->get(u"UniqueID", 1), Variant(guid)) << "a GUID is made once";
    EXPECT_EQ(drawing.shape(u"*" + guid), leaf);
    EXPECT_EQ(itemOf(group, u"Shapes", guid), leaf);
    EXPECT_EQ(failureOf([&] { drawing.shape(guid); }), "-2032465660 Object name not found");
    EXPECT_EQ(textIn(leaf->get(u"UniqueID", 2)), "");
    EXPECT_NE(failureOf([&] { drawing.shape(u"*" + guid); }), "");
}

} // namespace
} // namespace tarncom32::standin
