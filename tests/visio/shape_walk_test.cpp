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

/// A caller's own collection: the names of the shapes that it was given. It takes none of the name `refused`.
class Names final : public Object {
public:
    String typeName() const override { return u"Names"; }
    bool hasMember(const MemberName&) override { return true; }
    Variant invoke(const MemberName&, Access, std::span<Variant> arguments, std::uint32_t) override {
        const String name = toText(LateBound(toObject(arguments[0])).get(u"Name"));
        if (name == refused) throw Error(457);
        names += name + u" ";
        return {};
    }
    String names, refused;
};

TEST_F(ShapeWalkTest, VisitsEachContainerInOrderAndTheInsideOfAShapeAfterIt) {
    const std::tuple<bool, std::int16_t, std::int16_t, StringView> cases[] = {
        {true, -1, 0, u"a G G1 G2 G21 G22 G3 H H1 "},
        {true, 1, 0, u"a G H "}, // only exactly -1 is true
        {true, 0, -1, u"G "},
        {true, -1, -1, u"G G2 G21 "}, // H hides H1
        {true, -1, 2, u"a G G1 G2 G21 G22 G3 H H1 "},
        {false, 0, 0, u"G1 G2 G3 "},
        {false, 0, -1, u"G2 G21 "}, // a kept shape is entered all the same
    };
    for (const auto& [fromPage, includeSubShapes, filter, expected] : cases) {
        const auto shapes = make<Names>();
        // Late bound, so that a flag of 1 has every occasion to become True.
        const MemberName member(fromPage ? u"GetAllTheShapesFromThePage" : u"GetAllTheShapesFromTheShape");
        functions->call(member, fromPage ? page_ : group_, shapes, includeSubShapes, filter, u"Planner");
        EXPECT_EQ(shapes->names, expected) << fromPage;
    }
}

TEST_F(ShapeWalkTest, AShapeBelongsToTheApplicationThatItsCellNamesExactly) {
    const std::tuple<StringView, StringView, bool> cases[] = {{u"\"Planner\"", u"Planner", true},
                                                              {u"\"Planner\"", u"planner", false},
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
    const auto shapes = make<Names>();
    functions->call(u"GetAllTheShapesFromThePage", page_, shapes);
    functions->call(u"GetAllTheShapesFromTheShape", group_, shapes);
    functions->call(u"GetAllTheShapesFromThePage", page(newDrawing(startVisio()), 1), shapes);
    EXPECT_EQ(shapes->names, u"a G H G1 G2 G3 ") << "the last page is empty";
    EXPECT_THAT(shown(), testing::IsEmpty());
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

TEST_F(ShapeWalkTest, AFailureInsideAGroupIsReportedThereAndTheWalkGoesOn) {
    const auto shapes = make<Names>();
    shapes->refused = u"G21";
    functions->getAllTheShapesFromThePage(page_, shapes, true, false, u"");
    EXPECT_EQ(shapes->names, u"a G G1 G2 G3 H H1 ");
    functions->getAllTheShapesFromThePage({}, shapes, true, false, u"");
    functions->getAllTheShapesFromThePage(page_, {}, true, false, u"");
    const std::string ofThePage = "Problem in VisioFunctions.GetAllTheShapesFromThePage";
    EXPECT_THAT(reports(),
                testing::ElementsAre("Problem in VisioFunctions.GetAllTheShapesFromTheShape", ofThePage, ofThePage));
}

} // namespace
} // namespace tarncom32::visio::tests
