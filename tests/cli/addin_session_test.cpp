// The session that examples/addin_session.vbs runs under a script host, with the same drawing: what the program prints
// is what the script prints, kept in examples/addin_session.txt.

#include "automation/convert.h"
#include "cli/session.h"
#include "cli/session_output.h"
#include "standin/host.h"
#include "support/source_folder.h"
#include "support/test_platform.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace tarncom32::tests {
namespace {

using automation::ObjectRef;
using automation::String;
using automation::StringView;
using automation::toObject;

void setUserCell(const ObjectRef& sheet, StringView row, StringView text) {
    sheet->call(u"AddNamedRow", std::int16_t{242}, row, std::int16_t{0});
    toObject(sheet->get(u"Cells", u"User." + String(row)))->put(u"Formula", u'"' + String(text) + u'"');
}

ObjectRef owned(const ObjectRef& shape) {
    setUserCell(shape, u"Application", u"OfficeNetwork");
    return shape;
}

ObjectRef named(const ObjectRef& object, StringView universal, StringView local) {
    object->put(u"Name", universal);
    object->put(u"Name", local);
    return object;
}

ObjectRef square(const ObjectRef& in) {
    return toObject(in->call(u"DrawRectangle", 0, 0, 1, 1));
}

ObjectRef group(const ObjectRef& in) {
    const ObjectRef shape = square(in);
    shape->call(u"ConvertToGroup");
    return shape;
}

void buildDrawing(const ObjectRef& visio) {
    const ObjectRef document = toObject(toObject(visio->get(u"Documents"))->call(u"Add", u""));
    setUserCell(toObject(document->get(u"DocumentSheet")), u"Version", u"1.4");
    const ObjectRef master = toObject(toObject(document->get(u"Masters"))->call(u"Add"));
    square(named(master, u"Workstation", u"Workstation"));

    const ObjectRef pages = toObject(document->get(u"Pages"));
    const ObjectRef page = named(toObject(pages->call(u"Item", 1)), u"Ground floor", u"Erdgeschoss");
    const ObjectRef room = owned(named(group(page), u"Server room", u"Serverraum"));
    const ObjectRef rack = owned(named(group(room), u"Rack 1", u"Gestell 1"));
    owned(named(square(rack), u"Switch", u"Switch"));
    square(rack);
    room->call(u"Drop", master, 4, 2);
    page->call(u"Drop", master, 7, 2);
    owned(toObject(page->call(u"Drop", master, 7, 4)));
    square(page);
    square(named(toObject(pages->call(u"Add")), u"Upper floor", u"Upper floor"));
}

TEST(AddInSession, PrintsWhatTheScriptPrints) {
    standin::Host host;
    TestPlatform surroundings(host);
    library::Library library(surroundings.platform);
    const ObjectRef visio = host.start(u"Visio.Application");
    buildDrawing(visio);

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
        cli::Session session{surroundings.platform, library, options};
        session.application = visio;
        session.majorVersion =
            automation::toInteger(library.global(u"VisioFunctions")->call(u"WhichVisioMajorVersionIsThis", visio));
        cli::resolveAddonString(session);
        cli::checkVersion(session);
        cli::walkShapes(session);
        cli::printSession(output, session);
    }
    std::ostringstream expected;
    expected << std::ifstream(sourceFolder() / "examples/addin_session.txt").rdbuf();
    EXPECT_EQ(out.str(), expected.str());
    EXPECT_TRUE(surroundings.messageBox.shown.empty());
}

} // namespace
} // namespace tarncom32::tests
