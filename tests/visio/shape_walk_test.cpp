#include "visio/session.h"

#include <gtest/gtest.h>

namespace tarncom32::visio::tests {
namespace {

/// A page with the shapes
///     a
///     G  ours      G1, G2 ours { G21 ours, G22 }, G3
///     H            H1 ours
struct Drawing : Session {
    Drawing() {
        page = Session::page(newDrawing(startVisio()), 1);
        draw(page, u"a");
        group = drawGroup(page, u"G");
        own(group);
        draw(group, u"G1");
        const ObjectRef inner = drawGroup(group, u"G2");
        own(inner);
        own(draw(inner, u"G21"));
        draw(inner, u"G22");
        draw(group, u"G3");
        own(draw(drawGroup(page, u"H"), u"H1"));
    }

    static void own(const ObjectRef& shape) { setUserCell(shape, u"Application", u"\"Planner\""); }

    ObjectRef page;
    ObjectRef group;
};

String namesOf(const Ref<Collection>& shapes) {
    String names;
    for (std::size_t i = 0; i < shapes->size(); ++i)
        names += text(object((*shapes)[i])->get(u"Name")) + u" ";
    return names;
}

struct WalkCase {
    bool fromPage;
    std::int16_t includeSubShapes;
    std::int16_t filter;
    StringView application;
    StringView expected;
};

TEST(ShapeWalk, VisitsEachContainerInOrderAndTheInsideOfAShapeAfterIt) {
    const WalkCase cases[] = {
        {true, 0, 0, u"", u"a G H "},
        {true, -1, 0, u"", u"a G G1 G2 G21 G22 G3 H H1 "},
        {true, 1, 0, u"", u"a G H "}, // only exactly -1 is true
        {true, 0, -1, u"Planner", u"G "},
        {true, -1, -1, u"Planner", u"G G2 G21 "}, // H hides H1
        {true, -1, 2, u"Planner", u"a G G1 G2 G21 G22 G3 H H1 "},
        {true, -1, -1, u"planner", u""},
        {false, 0, 0, u"", u"G1 G2 G3 "},
        {false, -1, 0, u"", u"G1 G2 G21 G22 G3 "},
        {false, 0, -1, u"Planner", u"G2 G21 "}, // a kept shape is entered all the same
        {false, 1, -1, u"Planner", u"G2 G21 "},
    };
    Drawing drawing;
    for (const WalkCase& c : cases) {
        SCOPED_TRACE(automation::toUtf8(c.expected) + (c.fromPage ? "from the page" : "from the group"));
        const auto shapes = automation::make<Collection>();
        const Variant container = c.fromPage ? drawing.page : drawing.group;
        // Late bound, so that a flag of 1 has every occasion to become True.
        const automation::MemberName member(c.fromPage ? u"GetAllTheShapesFromThePage"
                                                       : u"GetAllTheShapesFromTheShape");
        drawing.functions->call(member, container, shapes, c.includeSubShapes, c.filter, c.application);
        EXPECT_EQ(namesOf(shapes), c.expected);
    }
    EXPECT_TRUE(drawing.shown().empty());
}

TEST(ShapeWalk, AddsToWhatIsThereAndLeavesTheRestToDefaults) {
    Drawing drawing;
    const auto shapes = automation::make<Collection>();
    drawing.functions->call(u"GetAllTheShapesFromThePage", drawing.page, shapes);
    drawing.functions->call(u"GetAllTheShapesFromTheShape", drawing.group, shapes);
    const ObjectRef empty = Session::page(Session::newDrawing(drawing.startVisio()), 1);
    drawing.functions->call(u"GetAllTheShapesFromThePage", empty, shapes);
    EXPECT_EQ(namesOf(shapes), u"a G H G1 G2 G3 ");
}

/// A caller's own collection, which fails when a certain shape comes.
class PickyCollection final : public automation::Described<PickyCollection> {
public:
    static constexpr StringView kClassName = u"PickyCollection";
    static const automation::ClassInfo& describe() {
        static const automation::ClassInfo info(
            kClassName, u"", {}, {},
            {automation::member::method<&PickyCollection::add>(1, u"Add", {automation::in(u"oItem")}, u"")});
        return info;
    }
    void add(const ObjectRef& oItem) {
        const String name = text(oItem->get(u"Name"));
        if (name == u"G21") throw automation::Error(457);
        names += name + u" ";
    }
    String names;
};

TEST(ShapeWalk, AFailureInsideAGroupIsReportedThereAndTheWalkGoesOn) {
    Drawing drawing;
    const auto shapes = automation::make<PickyCollection>();
    drawing.functions->getAllTheShapesFromThePage(drawing.page, shapes, true, false, u"");
    EXPECT_EQ(shapes->names, u"a G G1 G2 G3 H H1 ");
    ASSERT_EQ(drawing.shown().size(), 1u);
    EXPECT_TRUE(drawing.shown()[0].text.starts_with(
        u"Problem in VisioFunctions.GetAllTheShapesFromTheShape\r\nError Number: 457\r\n"));

    drawing.functions->getAllTheShapesFromThePage({}, shapes, true, false, u"");
    drawing.functions->getAllTheShapesFromThePage(drawing.page, {}, true, false, u"");
    ASSERT_EQ(drawing.shown().size(), 3u);
    EXPECT_TRUE(drawing.shown()[2].text.starts_with(
        u"Problem in VisioFunctions.GetAllTheShapesFromThePage\r\nError Number: 91\r\n"));
}

} // namespace
} // namespace tarncom32::visio::tests
