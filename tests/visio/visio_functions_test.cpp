#include "support/source_folder.h"
#include "visio/session.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace tarncom32::visio::tests {
namespace {

using frame::eTEST_DOCUMENT_COMPATIBILITY;

/// What a call left in its by-reference arguments; null where it wrote nothing.
struct Found {
    String parameters;
    ObjectRef shape, page, document;
};

Found resolve(Session& session, StringView addon, const ObjectRef& visio, StringView before = {}) {
    Found found{String(before), {}, {}, {}};
    session.functions->getVisioObjectsFromAddonString(addon, found.parameters, visio, found.shape, found.page,
                                                      found.document);
    return found;
}

TEST(AddonStringObjects, AreFoundAsFarAsTheyAreNamed) {
    Session session;
    const ObjectRef visio = session.startVisio();
    Session::newDrawing(visio);
    const ObjectRef document = Session::newDrawing(visio);
    object(document->get(u"Pages"))->call(u"Add");
    const ObjectRef page = Session::page(document, 2);
    const ObjectRef shape = Session::draw(page, u"Box");
    shape->put(u"Name", u"Kiste"); // the universal name stays

    struct Case {
        StringView addon;
        bool document, page, shape;
        StringView parameters;
    };
    const Case cases[] = {
        {u"/doc=2 /page=2 /shape=Kiste extra", true, true, true, u"extra "},
        {u"/shapeu=Box /doc=2 /page=2", true, true, true, u""},
        {u"/doc=2 /page=2 /shape=Box", true, true, false, u""},
        {u"/doc=2 /page=2", true, true, false, u""},
        {u"/doc=2 /shape=Kiste", true, false, false, u""},
        {u"/page=2 /shape=Kiste", false, false, false, u""},
        {u"/doc=2 /page=9 /shape=Kiste rest", true, false, false, u"rest "},
        {u"/doc=9 /page=2 rest", false, false, false, u"rest "},
        {u"/doc=-1 /page=2", false, false, false, u""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(automation::toUtf8(c.addon));
        const Found found = resolve(session, c.addon, visio, u"before");
        EXPECT_EQ(found.parameters, u"before" + String(c.parameters));
        EXPECT_EQ(found.document, c.document ? document : ObjectRef());
        EXPECT_EQ(found.page, c.page ? page : ObjectRef());
        EXPECT_EQ(found.shape, c.shape ? shape : ObjectRef());
    }
    // What is not found keeps the caller's value.
    Found kept{u"", shape, page, document};
    session.functions->getVisioObjectsFromAddonString(u"/doc=1 /page=5", kept.parameters, visio, kept.shape, kept.page,
                                                      kept.document);
    EXPECT_EQ(kept.page, page);
    EXPECT_EQ(kept.shape, shape);
    EXPECT_NE(kept.document, document);
    EXPECT_TRUE(session.shown().empty());
}

TEST(AddonStringObjects, ComeFromTheRunningVisioWhenNoneIsGiven) {
    Session session;
    Found nobody = resolve(session, u"/doc=1 rest", {});
    EXPECT_EQ(nobody.parameters, u"") << "nothing is written when there is no Visio";

    const ObjectRef document = Session::newDrawing(session.startVisio());
    EXPECT_EQ(resolve(session, u"/doc=1 rest", {}).document, document);

    // The same with a script's variables, and the shape's and page's left out.
    Variant arguments[] = {u"/doc=1 rest",       Variant(), automation::kMissing, automation::kMissing,
                           automation::kMissing, Variant()};
    session.functions->invoke(u"GetVisioObjectsFromAddonString", Access::Method, arguments);
    EXPECT_EQ(arguments[1], Variant(u"rest "));
    EXPECT_EQ(arguments[5], Variant(document));
}

TEST(DocumentVersion, ShowsTheMessageThatFitsTheDifference) {
    struct Case {
        const char16_t* formula; ///< of the version cell; null: no such cell
        StringView wanted;
        int failureCode;
        StringView message; ///< empty: passed
    };
    const Case cases[] = {
        {u"\"1.5\"", u"2", 0, u"too old"}, {u"\"2\"", u"1.5", 0, u""},        {u"\"2\"", u"1.5", 1, u"too new"},
        {u"\"1.5\"", u"2", 1, u""},        {u"\"1.5\"", u"2", 2, u"too old"}, {u"\"2\"", u"1.5", 2, u"too new"},
        {u"\"2\"", u"2.0", 2, u""},        {u"\"1.5\"", u"2", 3, u""},        {nullptr, u"no number", 2, u""},
        {u"10", u"9", 1, u"too new"},
    };
    Session session;
    const ObjectRef visio = session.startVisio();
    for (const Case& c : cases) {
        SCOPED_TRACE(automation::toUtf8(c.formula ? c.formula : u"none") + " " + std::to_string(c.failureCode));
        const ObjectRef document = Session::newDrawing(visio);
        if (c.formula) Session::setUserCell(object(document->get(u"DocumentSheet")), u"Version", c.formula);
        session.shown().clear();
        const Boolean failed = session.functions->testForDocumentVersionCompatibility(
            document, c.wanted, static_cast<eTEST_DOCUMENT_COMPATIBILITY>(c.failureCode), u"too old", u"too new",
            std::int16_t{7});
        EXPECT_EQ(failed.value, c.message.empty() ? 0 : -1);
        ASSERT_EQ(session.shown().size(), c.message.empty() ? 0u : 1u);
        if (c.message.empty()) continue;
        EXPECT_EQ(session.shown()[0].text, c.message);
        EXPECT_EQ(session.shown()[0].style, 48);
        EXPECT_EQ(session.shown()[0].title, u"7");
    }
}

TEST(DocumentVersion, FailuresGoToTheCaller) {
    Session session;
    const ObjectRef document = Session::newDrawing(session.startVisio());
    Session::setUserCell(object(document->get(u"DocumentSheet")), u"Version", u"\"1.0 beta\"");
    const auto test = [&](const ObjectRef& tested, StringView wanted) -> std::int32_t {
        try {
            session.functions->testForDocumentVersionCompatibility(tested, wanted, {}, u"", u"", u"");
            return 0;
        } catch (const automation::Error& error) {
            return error.number();
        }
    };
    EXPECT_EQ(test(document, u"1"), 13);
    EXPECT_EQ(test({}, u"1"), 91);
    EXPECT_TRUE(session.shown().empty());
}

TEST(VisioVersion, RoundsTheLeadingNumberHalfToEven) {
    const std::pair<StringView, std::int16_t> cases[] = {{u"16.0", 16},      {u"11.5", 12}, {u"10.5", 10},
                                                         {u"15.0.4420", 15}, {u"", 0},      {u"beta", 0}};
    Session session;
    for (const auto& [version, expected] : cases) {
        standin::ApplicationOptions options;
        options.version = version;
        const auto visio = standin::startApplication(options);
        EXPECT_EQ(session.functions->whichVisioMajorVersionIsThis(visio), expected) << automation::toUtf8(version);
    }
    EXPECT_TRUE(session.shown().empty());

    standin::ApplicationOptions options;
    options.version = u"99999";
    EXPECT_EQ(session.functions->whichVisioMajorVersionIsThis(standin::startApplication(options)), 0);
    ASSERT_EQ(session.shown().size(), 1u);
    EXPECT_EQ(session.shown()[0].text,
              u"Problem in VisioFunctions.WhichVisioMajorVersionIsThis\r\nError Number: 6\r\nError Description: "
              u"Overflow");
}

TEST(MoveDocument, OpensASavedFileInANewVisioAndFreesItInTheOld) {
    const std::filesystem::path file = tarncom32::tests::sourceFolder() / "examples/drawings/office-network.vsdx";
    Session session;
    const ObjectRef old = session.startVisio();
    const ObjectRef document = object(object(old->get(u"Documents"))->call(u"Open", file.u16string()));
    session.functions->moveDocumentToVisio(document);
    ASSERT_EQ(session.host.running().size(), 2u);
    EXPECT_EQ(text(object(old->get(u"Documents"))->get(u"Count")), u"0");
    const ObjectRef moved =
        object(object(session.host.running()[1]->get(u"Documents"))->call(u"Item", std::int16_t{1}));
    EXPECT_EQ(text(moved->get(u"FullName")), file.u16string());
    EXPECT_TRUE(session.shown().empty());
}

TEST(MoveDocument, ReportsADrawingWithNeitherFileNorTemplate) {
    Session session;
    session.functions->moveDocumentToVisio(Session::newDrawing(session.startVisio()));
    session.functions->moveDocumentToVisio({});
    ASSERT_EQ(session.shown().size(), 2u);
    for (const auto& shown : session.shown())
        EXPECT_TRUE(shown.text.starts_with(u"Problem in VisioFunctions.MoveDocumentToVisio\r\n"));
}

} // namespace
} // namespace tarncom32::visio::tests
