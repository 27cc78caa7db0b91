#include "standin/host.h"
#include "standin/object_model.h"

#include <algorithm>

namespace tarncom32::standin {
namespace {

using namespace tests;

class ObjectModelDocuments : public DrawingTest {};

TEST_F(ObjectModelDocuments, OpenedFilesAreFoundByPositionAndName) {
    const TemporaryFile file(smallDrawing(), "plan.vsdx");
    const auto application = startApplication();
    const ObjectRef documents = objectIn(application->get(u"Documents"));
    const ObjectRef blank = objectIn(documents->call(u"Add", u"vss"));
    EXPECT_EQ(get(blank, u"Path") + get(blank, u"Template") + get(blank, u"FullName"), "Stencil1");
    EXPECT_EQ(get(blank, u"Type"), "2");
    const ObjectRef opened = objectIn(documents->call(u"Open", file.path()));
    EXPECT_EQ(opened->get(u"FullName"), Variant(file.path()));
    EXPECT_EQ(get(opened, u"Path") + get(opened, u"Name"), automation::toUtf8(file.path()));
    for (const Variant& index : {Variant(2), Variant(2.4), Variant(u"PLAN.vsdx"), Variant(file.path())})
        EXPECT_EQ(objectIn(documents->call(u"Item", index)), opened);
    EXPECT_EQ(objectIn(documents->call(u"Open", file.path())), opened) << "an open file is not opened again";
    String windows = u"Z:" + file.path();
    std::ranges::replace(windows, u'/', u'\\');
    EXPECT_EQ(objectIn(documents->call(u"Open", windows)), opened) << "Z: is the root";

    const ObjectRef copy = objectIn(documents->call(u"Add", file.path()));
    EXPECT_EQ(copy->get(u"Template"), Variant(file.path()));
    EXPECT_EQ(get(copy, u"Name"), "Drawing1");
    opened->call(u"Close");
    EXPECT_EQ(get(copy, u"Index"), "2");
    EXPECT_EQ(get(documents, u"Count"), "2");
}

TEST_F(ObjectModelDocuments, AFileThatCannotBeReadOpensNothing) {
    const auto application = startApplication();
    const ObjectRef documents = objectIn(application->get(u"Documents"));
    const TemporaryFile text("no drawing");
    Parts parts = smallDrawing();
    parts.erase(page1);
    const TemporaryFile incomplete(parts);
    for (const auto& [path, says] :
         {std::pair(String(u"/nowhere/at all.vsdx"), "at all.vsdx"), std::pair(text.path(), "drawing.vsdx"),
          std::pair(incomplete.path(), "page1.xml")}) {
        const std::string error = failureOf([&, path = path] { documents->call(u"Open", path); });
        EXPECT_EQ(error.substr(0, 12), "-2032465765 ") << error;
        EXPECT_NE(error.find(says), std::string::npos) << error;
    }
    EXPECT_EQ(get(documents, u"Count"), "0");
}

TEST_F(ObjectModelDocuments, FileNamesThatAreNoTextAreNoTrouble) {
    const TemporaryFile file(smallDrawing(), "plan\xFF.vsdx");
    ApplicationOptions options;
    options.locate = [&](StringView) { return file.location(); };
    const auto application = startApplication(options);
    const ObjectRef documents = objectIn(application->get(u"Documents"));
    EXPECT_EQ(textIn(objectIn(documents->call(u"Open", u"plan"))->get(u"Name")), "plan\uFFFD.vsdx");
    const ObjectRef elsewhere = objectIn(startApplication()->get(u"Documents"));
    EXPECT_EQ(failureOf([&] { elsewhere->call(u"Open", String{u'/', 0xD800}); }).substr(0, 12), "-2032465765 ");
}

TEST_F(ObjectModelDocuments, WhatIsNotThereRaisesVisiosErrors) {
    const ObjectRef documents = objectIn(drawing.application->get(u"Documents"));
    const ObjectRef pages = objectIn(drawing.document->get(u"Pages"));
    const ObjectRef shape = drawing.square();
    const std::tuple<const char*, std::function<void()>, const char*> cases[] = {
        {"document 0", [&] { documents->call(u"Item", 0); }, "-2032465753 Invalid parameter"},
        {"page 2", [&] { pages->call(u"Item", 2); }, "-2032465753 Invalid parameter"},
        {"page by ID", [&] { pages->call(u"ItemFromID", 7); }, "-2032465756 Invalid sheet identifier"},
        {"shape 2", [&] { drawing.shape(2); }, "-2032465753 Invalid parameter"},
        {"shape by name", [&] { drawing.shape(u"Sheet.2"); }, "-2032465660 Object name not found"},
        {"shape by ID", [&] { drawing.shapes()->call(u"ItemFromID", -1); }, "-2032465756 Invalid sheet identifier"},
        {"cell", [&] { shape->get(u"Cells", u"User.Version"); }, "-2032466967 Unexpected end of file"},
    };
    for (const auto& [what, action, error] : cases)
        EXPECT_EQ(failureOf(action), error) << what;
}

TEST_F(ObjectModelDocuments, ObjectsOutliveTheirDocument) {
    const ObjectRef shape = drawing.square();
    const ObjectRef cell = objectIn(shape->get(u"Cells", u"Width"));
    const ObjectRef shapes = drawing.shapes();
    const auto walk = shapes->enumerate();
    drawing.document->call(u"Close");
    const std::string closed = "-2032465763 Inappropriate source object for this action (its document has been closed)";
    Variant next;
    const std::function<void()> actions[] = {[&] { shape->get(u"Name"); },
                                             [&] { shape->get(u"Application"); },
                                             [&] { cell->get(u"ResultIU"); },
                                             [&] { shapes->get(u"Count"); },
                                             [&] { walk->next(next); },
                                             [&] { drawing.page->get(u"Name"); },
                                             [&] { drawing.document->call(u"Close"); }};
    for (const auto& action : actions)
        EXPECT_EQ(failureOf(action), closed);
}

TEST_F(ObjectModelDocuments, PagesKeepTheirOrderAndNames) {
    const ObjectRef pages = objectIn(drawing.document->get(u"Pages"));
    const ObjectRef second = objectIn(pages->call(u"Add"));
    const ObjectRef third = objectIn(pages->call(u"Add"));
    second->put(u"Name", u"Plan");
    EXPECT_EQ(get(second, u"NameU"), "Plan") << "the first new name is the universal one too";
    second->put(u"Name", u"Grundriss");
    EXPECT_EQ(get(second, u"NameU"), "Plan");
    EXPECT_EQ(objectIn(pages->call(u"ItemU", u"plan")), second);
    EXPECT_EQ(failureOf([&] { third->put(u"Name", u"Grundriss"); }),
              "-2147024809 The name 'Grundriss' is already in use.");
    drawing.page->call(u"Delete", 1);
    EXPECT_EQ(get(third, u"Index") + " " + get(third, u"Name"), "2 Page-2");
    EXPECT_EQ(failureOf([&] { drawing.page->get(u"Shapes"); }),
              "-2032465763 Inappropriate source object for this action (the page has been deleted)");
}

TEST(ObjectModelHost, RunsApplicationsUntilTheyQuit) {
    Host host;
    EXPECT_EQ(failureOf([&] { host.attach(u"Visio.Application"); }).substr(0, 4), "429 ");
    const auto first = host.startApplication({.version = u"11.5"});
    const ObjectRef second = host.start(u"tarnvisiostandin.application.1");
    EXPECT_EQ(host.attach(u"visio.application"), ObjectRef(first));
    EXPECT_EQ(get(first, u"Version"), "11.5");
    for (const StringView other : {u"Visio.Application.", u"Visio.Applications", u"Word.Application", u""})
        EXPECT_EQ(failureOf([&] { host.start(other); }).substr(0, 4), "429 ") << automation::toUtf8(other);

    const ObjectRef document = objectIn(objectIn(first->get(u"Documents"))->call(u"Add", u""));
    first->call(u"Quit");
    EXPECT_EQ(host.attach(u"Visio.Application"), second);
    EXPECT_NE(failureOf([&] { document->get(u"Name"); }), "");
    EXPECT_NE(failureOf([&] { first->get(u"Documents"); }), "");
}

} // namespace
} // namespace tarncom32::standin
