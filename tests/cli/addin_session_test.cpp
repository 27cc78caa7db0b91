// The session that examples/addin_session.vbs runs under a script host, on the same page: what the program prints is
// what the script prints, kept in examples/addin_session.txt.

#include "cli/session.h"

#include "cli/session_output.h"
#include "support/source_folder.h"
#include "visio/session.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace tarncom32::tests {
namespace {

using automation::ObjectRef;
using automation::StringView;
using automation::toObject;
using Visio = visio::tests::Session;

/// The sheet, now of the application that the session is about.
ObjectRef owned(const ObjectRef& sheet) {
    Visio::setUserCell(sheet, u"Application", u"\"OfficeNetwork\"");
    return sheet;
}

/// The object with a name that is not its universal one any more.
ObjectRef named(const ObjectRef& object, StringView local) {
    object->put(u"Name", local);
    return object;
}

void buildDrawing(const ObjectRef& application) {
    const ObjectRef document = Visio::newDrawing(application);
    Visio::setUserCell(toObject(document->get(u"DocumentSheet")), u"Version", u"\"1.4\"");
    const ObjectRef master = named(toObject(toObject(document->get(u"Masters"))->call(u"Add")), u"Workstation");
    master->call(u"DrawRectangle", 0, 0, 1, 1);

    const ObjectRef page = named(named(Visio::page(document, 1), u"Ground floor"), u"Erdgeschoss");
    const ObjectRef room = owned(named(Visio::drawGroup(page, u"Server room"), u"Serverraum"));
    const ObjectRef rack = owned(named(Visio::drawGroup(room, u"Rack 1"), u"Gestell 1"));
    owned(Visio::draw(rack, u"Switch"));
    rack->call(u"DrawRectangle", 0, 0, 1, 1);
    room->call(u"Drop", master, 4, 2);
    page->call(u"Drop", master, 7, 2);
    owned(toObject(page->call(u"Drop", master, 7, 4)));
    page->call(u"DrawRectangle", 0, 0, 9, 6);
}

TEST(AddInSession, PrintsWhatTheScriptPrints) {
    Visio visio;
    const ObjectRef application = visio.startVisio();
    buildDrawing(application);
    library::Library library(visio.fakes.platform);

    std::ostringstream out;
    const cli::Output output{out, out, cli::Terminal(false, 0)};
    for (const auto& [addonArgs, wantedVersion] :
         {std::pair("/doc=1 /page=1 /verbose", "1.4"), std::pair("/doc=1 /page=1 /shape=Serverraum", "")}) {
        if (out.tellp() > 0) out << '\n';
        cli::SessionOptions options;
        options.drawing = "Drawing1";
        options.addonArgs = addonArgs;
        options.wantedVersion = wantedVersion;
        options.application = "OfficeNetwork";
        // The walk inside a shape enters every group, asked to or not.
        options.subShapes = *wantedVersion != 0;
        cli::Session session{visio.fakes.platform, library, options};
        session.application = application;
        session.majorVersion = visio.functions->whichVisioMajorVersionIsThis(application);
        cli::resolveAddonString(session);
        cli::checkVersion(session);
        cli::walkShapes(session);
        cli::printSession(output, session);
    }
    std::ostringstream expected;
    expected << std::ifstream(sourceFolder() / "examples/addin_session.txt").rdbuf();
    EXPECT_EQ(out.str(), expected.str());
    EXPECT_TRUE(visio.shown().empty());
}

} // namespace
} // namespace tarncom32::tests
