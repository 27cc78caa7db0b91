#include "support/source_folder.h"
#include "visio/session.h"

namespace tarncom32::visio::tests {
namespace {

using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;

class VisioFunctionsTest : public SessionTest {
protected:
    /// What a call leaves in its by-reference arguments: the parameters, the shape, the page and the document.
    auto resolve(StringView addon, const ObjectRef& visio, String parameters = {}, ObjectRef shape = {},
                 ObjectRef page = {}, ObjectRef document = {}) {
        functions->getVisioObjectsFromAddonString(addon, parameters, visio, shape, page, document);
        return std::tuple(parameters, shape, page, document);
    }
};

TEST_F(VisioFunctionsTest, ObjectsOfAddonStringsAreFoundAsFarAsTheyAreNamed) {
    const ObjectRef visio = startVisio(), none;
    newDrawing(visio);
    const ObjectRef drawing = newDrawing(visio);
    LateBound(drawing).get(u"Pages").call(u"Add");
    const ObjectRef second = page(drawing, 2);
    const ObjectRef box = draw(second, u"Box");
    box->put(u"Name", u"Kiste"); // the universal name stays
    const std::tuple<StringView, ObjectRef, ObjectRef, ObjectRef, StringView> cases[] = {
        {u"/doc=2 /page=2 /shape=Kiste extra", drawing, second, box, u"extra "},
        {u"/shapeu=Box /doc=2 /page=2", drawing, second, box, u""},
        {u"/doc=2 /page=2 /shape=Box", drawing, second, none, u""},
        {u"/doc=2 /shape=Kiste", drawing, none, none, u""},
        {u"/page=2 /shape=Kiste", none, none, none, u""},
        {u"/doc=2 /page=9 /shape=Kiste rest", drawing, none, none, u"rest "},
        {u"/doc=9 /page=2 rest", none, none, none, u"rest "},
    };
    for (const auto& [addon, document, page, shape, parameters] : cases)
        EXPECT_THAT(resolve(addon, visio, u"before"), FieldsAre(u"before" + String(parameters), shape, page, document))
            << toUtf8(addon);
    // What is not found keeps the caller's value.
    EXPECT_THAT(resolve(u"/doc=1 /page=5", visio, u"", box, second, drawing),
                FieldsAre(u"", box, second, testing::Ne(drawing)));
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(VisioFunctionsTest, ObjectsOfAddonStringsComeFromTheRunningVisioWhenNoneIsGiven) {
    EXPECT_EQ(std::get<0>(resolve(u"/doc=1 rest", {})), u"") << "nothing is written when there is no Visio";
    const ObjectRef document = newDrawing(startVisio());
    EXPECT_EQ(std::get<3>(resolve(u"/doc=1 rest", {})), document);
}

TEST_F(VisioFunctionsTest, DocumentVersionsShowTheMessageThatFitsTheDifference) {
    // The version cell's formula (none: there is no such cell), the version that is wanted, which differences count,
    // and the message ("": passed).
    const std::tuple<StringView, StringView, int, StringView> cases[] = {
        {u"\"1.5\"", u"2", 0, u"too old"}, {u"\"2\"", u"1.5", 0, u""},        {u"\"2\"", u"1.5", 1, u"too new"},
        {u"\"1.5\"", u"2", 1, u""},        {u"\"1.5\"", u"2", 2, u"too old"}, {u"\"2\"", u"1.5", 2, u"too new"},
        {u"\"2\"", u"2.0", 2, u""},        {u"\"1.5\"", u"2", 3, u""},        {u"", u"no number", 2, u""},
        {u"10", u"9", 1, u"too new"},
    };
    const ObjectRef visio = startVisio();
    for (const auto& [formula, wanted, differences, message] : cases) {
        SCOPED_TRACE(toUtf8(formula) + " " + std::to_string(differences));
        const ObjectRef document = newDrawing(visio);
        if (!formula.empty()) setUserCell(toObject(document->get(u"DocumentSheet")), u"Version", formula);
        shown().clear();
        const Boolean failed = functions->testForDocumentVersionCompatibility(
            document, wanted, static_cast<frame::eTEST_DOCUMENT_COMPATIBILITY>(differences), u"too old", u"too new",
            std::int16_t{7});
        EXPECT_EQ(failed.value, message.empty() ? 0 : -1);
        EXPECT_THAT(shown(), testing::SizeIs(message.empty() ? 0 : 1));
        for (const auto& box : shown())
            EXPECT_THAT(box, FieldsAre(message, 48, u"7"));
    }
    // Failures go to the caller.
    const ObjectRef beta = newDrawing(visio);
    setUserCell(toObject(beta->get(u"DocumentSheet")), u"Version", u"\"1.0 beta\"");
    for (const auto& [document, error] : {std::pair(beta, 13), std::pair(ObjectRef(), 91)})
        EXPECT_EQ(errorOf([&, document = document] {
                      functions->testForDocumentVersionCompatibility(document, u"1", {}, u"", u"", u"");
                  }),
                  error);
}

TEST_F(VisioFunctionsTest, VisiosVersionIsTheLeadingNumberRoundedHalfToEven) {
    const std::pair<StringView, std::int16_t> cases[] = {
        {u"16.0", 16}, {u"11.5", 12}, {u"10.5", 10}, {u"15.0.4420", 15}, {u"", 0}, {u"beta", 0}, {u"99999", 0}};
    for (const auto& [version, expected] : cases) {
        EXPECT_THAT(shown(), IsEmpty()) << "only the last is reported";
        const auto visio = standin::startApplication({.version = String(version)});
        EXPECT_EQ(functions->whichVisioMajorVersionIsThis(visio), expected) << toUtf8(version);
    }
    EXPECT_THAT(reports(), ElementsAre("Problem in VisioFunctions.WhichVisioMajorVersionIsThis"));
}

TEST_F(VisioFunctionsTest, ADocumentIsOpenedInANewVisioAndFreedInTheOld) {
    const auto file = tarncom32::tests::sourceFolder() / "examples/drawings/office-network.vsdx";
    const ObjectRef old = startVisio();
    const LateBound documents = LateBound(old).get(u"Documents");
    functions->moveDocumentToVisio(documents.call(u"Open", file.u16string()).object());
    ASSERT_EQ(host.running().size(), 2u);
    EXPECT_EQ(toLong(documents.get(u"Count")), 0);
    const LateBound moved = LateBound(host.running()[1]).get(u"Documents").call(u"Item", std::int16_t{1});
    EXPECT_EQ(toText(moved.get(u"FullName")), file.u16string());
    EXPECT_THAT(shown(), IsEmpty());
    // One with neither file nor template cannot move.
    for (const ObjectRef& unmovable : {newDrawing(old), ObjectRef()})
        functions->moveDocumentToVisio(unmovable);
    const std::string report = "Problem in VisioFunctions.MoveDocumentToVisio";
    EXPECT_THAT(reports(), ElementsAre(report, report));
}

} // namespace
} // namespace tarncom32::visio::tests
