#include "automation/collection.h"
#include "standin/object_model.h"

namespace tarncom32::standin {
namespace {

using namespace tests;

class ObjectModelMasters : public DrawingTest {};

/// A master "PC" with cells, text and two sub-shapes, and three instances of it: 1 has nothing of its own but what it
/// says about rows, 10 spells out one sub-shape and deletes the other, 20 has its own text and sections.
Parts drawingWithInstances() {
    Parts parts = smallDrawing();
    change(parts, "visio/masters/master1.xml", "<Shape ID='5' Type='Group'>",
           "<Shape ID='5' Type='Group'><Cell N='Width' V='1' U='MM'/><Cell N='EventDrop' V='0' F='RUNADDON(\"x\")'/>"
           "<Section N='User'><Row N='Class' LocalName='Klasse'><Cell N='Value' V='Node' U='STR'/></Row>"
           "<Row N='Cost'><Cell N='Value' V='3' F='1+2'/></Row></Section>"
           "<Section N='Property'><Row N='Owner'><Cell N='Label' V='Owned by' U='STR'/></Row></Section>"
           "<Text>master&#xA;</Text>");
    change(parts, page1, "<Shape ID='1' Type='Shape'/>",
           "<Shape ID='1' Master='2'><Section N='User'><Row N='Cost'><Cell N='Value' V='7' F='Inh'/></Row>"
           "<Row N='Class' Del='1'/></Section></Shape>"
           "<Shape ID='10' Master='2' Type='Group'><Cell N='Width' V='3'/><Shapes>"
           "<Shape ID='11' MasterShape='6'/><Shape ID='12' MasterShape='7' Del='1'/></Shapes></Shape>"
           "<Shape ID='20' Master='2' Name='Mine' NameU='Mine'><Section N='User' Del='1'/>"
           "<Section N='Property'><Row N='Owner'><Cell N='Value' V='me' U='STR'/></Row></Section>"
           "<Text>own</Text></Shape>");
    return parts;
}

TEST_F(ObjectModelMasters, CellsAreInherited) {
    const TemporaryFile file(drawingWithInstances());
    const auto application = startApplication();
    const ObjectRef page = objectIn(objectIn(open(application, file.path())->get(u"Pages"))->call(u"Item", 1));
    const std::tuple<StringView, StringView, int, int, const char*, const char*> cases[] = {
        {u"Sheet.1", u"Width", 0, -1, "25.4 mm", "25.4 mm"},
        {u"Sheet.1", u"EventDrop", 0, -1, "RUNADDON(\"x\")", "0"},
        {u"Sheet.1", u"User.Cost", 0, -1, "1+2", "7"}, // inherited formula, the instance's own result
        {u"Sheet.1", u"User.Class", 0, 0, "", ""},     // deleted in the instance
        {u"Sheet.1", u"Prop.Owner.Label", 0, -1, "\"Owned by\"", "Owned by"},
        {u"Sheet.1", u"PinX", 0, -1, "0", "0"}, // every shape has it
        {u"Sheet.10", u"Width", -1, -1, "3", "3"},
        {u"Sheet.10", u"User.Klasse", 0, -1, "\"Node\"", "Node"}, // by its local name
        {u"Mine", u"User.Class", 0, 0, "", ""},                   // the section was deleted
        {u"Mine", u"Prop.Owner", -1, -1, "\"me\"", "me"},
    };
    for (const auto& [shapeName, cellName, local, exists, formula, result] : cases) {
        SCOPED_TRACE(automation::toUtf8(shapeName) + " " + automation::toUtf8(cellName));
        const ObjectRef shape = itemOf(page, u"Shapes", shapeName);
        EXPECT_EQ(textIn(shape->get(u"CellExists", cellName, 1)), std::to_string(local));
        EXPECT_EQ(textIn(shape->get(u"CellExists", cellName, 0)), std::to_string(exists));
        if (!exists) continue;
        const ObjectRef cell = objectIn(shape->get(u"Cells", cellName));
        EXPECT_EQ(get(cell, u"Formula"), formula);
        EXPECT_EQ(textIn(cell->get(u"ResultStr", 0)), result);
        EXPECT_EQ(get(cell, u"IsInherited"), local ? "0" : "-1");
    }
    const ObjectRef tenth = objectIn(objectIn(page->get(u"Shapes"))->call(u"ItemFromID", 10));
    EXPECT_EQ(textIn(tenth->get(u"CellExistsU", u"User.Klasse", 0)), "0") << "universal names only";
    EXPECT_EQ(get(tenth, u"Name") + " " + get(tenth, u"NameU"), "Rechner.10 PC.10");
    EXPECT_EQ(textIn(tenth->get(u"RowCount", 242)), "2");

    // Writing makes a cell the instance's own and leaves the master's as it was.
    objectIn(tenth->get(u"Cells", u"User.Klasse"))->put(u"Formula", u"\"Leaf\"");
    EXPECT_EQ(textIn(tenth->get(u"CellExistsU", u"User.Class", 1)), "-1");
    EXPECT_EQ(textIn(objectIn(tenth->get(u"CellsU", u"User.Class"))->get(u"ResultStr", 0)), "Leaf");
    const ObjectRef prototype = objectIn(objectIn(objectIn(tenth->get(u"Master"))->get(u"Shapes"))->call(u"Item", 1));
    EXPECT_EQ(textIn(objectIn(prototype->get(u"CellsU", u"User.Class"))->get(u"ResultStr", 0)), "Node");
}

TEST_F(ObjectModelMasters, SubShapesAndTextsAreInherited) {
    const TemporaryFile file(drawingWithInstances());
    const auto application = startApplication();
    const ObjectRef document = open(application, file.path());
    const ObjectRef shapes = objectIn(itemOf(document, u"Pages", 1)->get(u"Shapes"));
    std::string walked;
    automation::forEach(*shapes, [&](const Variant& item) {
        const ObjectRef shape = objectIn(item);
        walked += get(shape, u"ID") + " type " + get(shape, u"Type") + " '" + get(shape, u"Text") + "':";
        automation::forEach(*objectIn(shape->get(u"Shapes")),
                            [&](const Variant& sub) { walked += " " + get(objectIn(sub), u"NameU"); });
        walked += "; ";
    });
    EXPECT_EQ(walked, "1 type 2 'master': Sheet.21 Screen.22; 10 type 2 'master': Sheet.11; "
                      "20 type 2 'own': Sheet.23 Screen.24; ");
    // The second master's group holds an instance of the first that spells out one of its two sub-shapes.
    const ObjectRef desk = objectIn(objectIn(document->get(u"Masters"))->call(u"ItemU", u"desk"));
    const ObjectRef instance = objectIn(objectIn(desk->get(u"Shapes"))->call(u"ItemU", u"PC.6"));
    EXPECT_EQ(get(objectIn(instance->get(u"Shapes")), u"Count"), "2");
    EXPECT_EQ(objectIn(instance->get(u"ContainingMaster")), desk);
}

TEST_F(ObjectModelMasters, InstancesThatMultiplyAreRefused) {
    Parts parts = smallDrawing();
    std::string instances;
    for (int id = 1; id <= 50; ++id)
        instances += "<Shape ID='" + std::to_string(id) + "' Master='4'/>";
    change(parts, page1, "<Shape ID='1' Type='Shape'/>", instances);
    const TemporaryFile file(parts);
    const auto open = [&](std::size_t limit) {
        ApplicationOptions options;
        options.limits.maxShapes = limit;
        return failureOf([&] { objectIn(startApplication(options)->get(u"Documents"))->call(u"Open", file.path()); });
    };
    EXPECT_EQ(open(200), "");
    EXPECT_NE(open(60).find("page1.xml"), std::string::npos) << open(60);
}

/// As many masters, each with an instance of the one before in the innermost of 99 groups, and an instance of the last.
Parts drawingWithChain(int masters) {
    Parts parts = drawingWithMasters(masters, [](int number) {
        std::string text = number == 1 ? "<Shape ID='5'/>" : numbered("<Shape ID='5' Master='#'/>", number - 1);
        for (int id = 10; id < 109; ++id)
            text = numbered("<Shape ID='#' Type='Group'><Shapes>", id) + text + "</Shapes></Shape>";
        return text;
    });
    change(parts, page1, "<Shape ID='1' Type='Shape'/>", numbered("<Shape ID='1' Master='#'/>", masters));
    return parts;
}

TEST_F(ObjectModelMasters, InstancesThatNestGroupsTooDeeplyAreRefused) {
    const auto application = startApplication();
    const ObjectRef documents = objectIn(application->get(u"Documents"));
    const auto open = [&](int masters) {
        const TemporaryFile file(drawingWithChain(masters));
        return failureOf([&] { documents->call(u"Open", file.path()); });
    };
    EXPECT_EQ(open(5), "");
    const std::string error = open(6);
    EXPECT_NE(error.find("m6.xml"), std::string::npos) << error;
    EXPECT_NE(error.find("too deeply"), std::string::npos) << error;

    const ObjectRef master = objectIn(objectIn(drawing.document->get(u"Masters"))->call(u"Add"));
    drawing.square(drawing.group(master));
    ObjectRef innermost;
    for (int groups = 0; groups < 499; ++groups)
        innermost = drawing.group(innermost);
    const std::string tooDeep =
        "-2032465766 Requested operation is presently disabled (the groups are nested too deeply)";
    EXPECT_EQ(failureOf([&] { innermost->call(u"Drop", master, 0, 0); }), tooDeep);
    innermost = drawing.group(innermost);
    EXPECT_EQ(failureOf([&] { drawing.square(innermost); }), tooDeep);
}

TEST_F(ObjectModelMasters, DroppedInstancesHaveWhatTheMasterHas) {
    const ObjectRef master = objectIn(objectIn(drawing.document->get(u"Masters"))->call(u"Add"));
    master->put(u"Name", u"Router");
    const auto drop = [&] { return objectIn(drawing.page->call(u"Drop", master, 2, 3)); };
    EXPECT_EQ(failureOf([&] { drop(); }),
              "-2032465762 Inappropriate target object for this action (the master has no shape)");
    const ObjectRef group = drawing.group(master);
    drawing.square(group)->put(u"Text", u"port");
    group->call(u"AddNamedRow", 242, u"Application", 0);
    objectIn(group->get(u"Cells", u"User.Application"))->put(u"Formula", u"\"net\"");

    const ObjectRef first = drop();
    const ObjectRef second = drop();
    EXPECT_EQ(get(first, u"Name") + " " + get(second, u"Name"), "Router Router.3");
    EXPECT_EQ(objectIn(second->get(u"Master")), master);
    EXPECT_EQ(textIn(objectIn(second->get(u"Cells", u"PinY"))->get(u"ResultIU")), "3");
    EXPECT_EQ(textIn(objectIn(second->get(u"Cells", u"User.Application"))->get(u"ResultStr", 0)), "net");
    const ObjectRef port = itemOf(second, u"Shapes", 1);
    EXPECT_EQ(get(port, u"Text") + " " + get(port, u"NameID"), "port Sheet.4");
    EXPECT_EQ(failureOf([&] { master->call(u"Drop", master, 0, 0); }),
              "-2032465762 Inappropriate target object for this action (a master cannot contain itself)");
    EXPECT_NE(failureOf([&] { drawing.page->call(u"Drop", BlankDrawing().page, 0, 0); }), "");
}

} // namespace
} // namespace tarncom32::standin
