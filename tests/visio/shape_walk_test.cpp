#include "frame/native_helper.h"
#include "visio/session.h"

namespace tarncom32::visio::tests {
namespace {

/// A page with the shapes
///     a
///     G  ours      G1, G2 ours { G21 ours, G22 }, G3
///     H            H1 ours
class ShapeWalkTest : public SessionTest {
protected:
    ShapeWalkTest() {
        page_ = page(newDrawing(startVisio()), 1);
        draw(page_, u"a");
        group_ = drawGroup(page_, u"G");
        own(group_);
        draw(group_, u"G1");
        const ObjectRef inner = drawGroup(group_, u"G2");
        own(inner);
        own(draw(inner, u"G21"));
        draw(inner, u"G22");
        draw(group_, u"G3");
        own(draw(drawGroup(page_, u"H"), u"H1"));
    }

    static void own(const ObjectRef& shape) { setUserCell(shape, u"Application", u"\"Planner\""); }

    ObjectRef page_, group_;
};

String namesOf(const Ref<Collection>& shapes) {
    String names;
    for (std::size_t i = 0; i < shapes->size(); ++i)
        names += toText(LateBound((*shapes)[i]).get(u"Name")) + u" ";
    return names;
}

TEST_F(ShapeWalkTest, VisitsEachContainerInOrderAndTheInsideOfAShapeAfterIt) {
    const std::tuple<bool, std::int16_t, std::int16_t, StringView, StringView> cases[] = {
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
    for (const auto& [fromPage, includeSubShapes, filter, application, expected] : cases) {
        SCOPED_TRACE(toUtf8(expected) + (fromPage ? "from the page" : "from the group"));
        const auto shapes = make<Collection>();
        const Variant container = fromPage ? page_ : group_;
        // Late bound, so that a flag of 1 has every occasion to become True.
        const MemberName member(fromPage ? u"GetAllTheShapesFromThePage" : u"GetAllTheShapesFromTheShape");
        functions->call(member, container, shapes, includeSubShapes, filter, application);
        EXPECT_EQ(namesOf(shapes), expected);
    }
    EXPECT_THAT(shown(), testing::IsEmpty());
}

TEST_F(ShapeWalkTest, AShapeBelongsToTheApplicationThatItsCellNamesExactly) {
    const std::tuple<StringView, StringView, bool> cases[] = {{u"\"Planner\"", u"Planner", true},
                                                              {u"\"Planner\"", u"planner", false},
                                                              {u"\"Planner\"", u"", false},
                                                              {u"\"\"", u"", true},
                                                              {u"Planner", u"Planner", true}};
    for (const auto& [formula, application, ours] : cases) {
        const ObjectRef shape = draw(page_, u"x");
        EXPECT_FALSE(frame::weCareAboutThisShape(platform::westernCodePage(), *shape, u"")) << "there is no cell";
        setUserCell(shape, u"Application", formula);
        EXPECT_EQ(frame::weCareAboutThisShape(platform::westernCodePage(), *shape, application), ours)
            << toUtf8(formula);
        shape->call(u"Delete");
    }
}

TEST_F(ShapeWalkTest, AddsToWhatIsThereAndLeavesTheRestToDefaults) {
    const auto shapes = make<Collection>();
    functions->call(u"GetAllTheShapesFromThePage", page_, shapes);
    functions->call(u"GetAllTheShapesFromTheShape", group_, shapes);
    const ObjectRef empty = page(newDrawing(startVisio()), 1);
    functions->call(u"GetAllTheShapesFromThePage", empty, shapes);
    EXPECT_EQ(namesOf(shapes), u"a G H G1 G2 G3 ");
}

/// A shape with one shape in it, `depth` times: it is its own `Shapes`. At depth -1 the one in it is itself.
class NestedShape final : public Object {
public:
    explicit NestedShape(int depth) : depth_(depth) {}
    String typeName() const override { return u"Shape"; }
    bool hasMember(const MemberName&) override { return true; }
    Variant invoke(const MemberName& name, Access, std::span<Variant>, std::uint32_t) override {
        return name.text() == u"Count" ? Variant(depth_ == 0 ? 0 : 1) : Variant(ObjectRef(this));
    }
    std::unique_ptr<Enumerator> enumerate() override {
        const auto inside = make<Collection>();
        inside->add(depth_ < 0 ? ObjectRef(this) : ObjectRef(make<NestedShape>(depth_ - 1)));
        return inside->newEnum();
    }

private:
    int depth_;
};

TEST_F(ShapeWalkTest, GoesToAnyDepthButNotRoundInCircles) {
    const auto shapes = make<Collection>();
    functions->getAllTheShapesFromTheShape(make<NestedShape>(200000), shapes, true, false, u"");
    EXPECT_EQ(shapes->count(), 200000);
    EXPECT_THAT(reports(), testing::IsEmpty());
    functions->getAllTheShapesFromThePage(make<NestedShape>(-1), shapes, true, false, u"");
    EXPECT_EQ(shapes->count(), 200001);
    EXPECT_THAT(reports(), testing::ElementsAre("Problem in VisioFunctions.GetAllTheShapesFromTheShape"));
}

/// A caller's own collection, which fails when a certain shape comes.
class PickyCollection final : public Described<PickyCollection> {
public:
    static constexpr StringView kClassName = u"PickyCollection";
    static const ClassInfo& describe() {
        static const ClassInfo info(kClassName, u"", {}, {},
                                    {member::method<&PickyCollection::add>(1, u"Add", {in(u"oItem")}, u"")});
        return info;
    }
    void add(const ObjectRef& oItem) {
        const String name = toText(oItem->get(u"Name"));
        if (name == u"G21") throw Error(457);
        names += name + u" ";
    }
    String names;
};

TEST_F(ShapeWalkTest, AFailureInsideAGroupIsReportedThereAndTheWalkGoesOn) {
    const auto shapes = make<PickyCollection>();
    functions->getAllTheShapesFromThePage(page_, shapes, true, false, u"");
    EXPECT_EQ(shapes->names, u"a G G1 G2 G3 H H1 ");
    functions->getAllTheShapesFromThePage({}, shapes, true, false, u"");
    functions->getAllTheShapesFromThePage(page_, {}, true, false, u"");
    EXPECT_THAT(reports(), testing::ElementsAre("Problem in VisioFunctions.GetAllTheShapesFromTheShape",
                                                "Problem in VisioFunctions.GetAllTheShapesFromThePage",
                                                "Problem in VisioFunctions.GetAllTheShapesFromThePage"));
}

} // namespace
} // namespace tarncom32::visio::tests
