#pragma once

#include "automation/collection.h"
#include "automation/late_bound.h"
#include "standin/host.h"
#include "support/error_of.h"
#include "support/test_platform.h"
#include "visio/visio_functions.h"

#include <gmock/gmock.h>

namespace tarncom32::visio::tests {

using namespace automation;
using tarncom32::tests::errorOf;

/// A running stand-in and the class under test.
struct Session {
    standin::Host host;
    tarncom32::tests::TestPlatform fakes{host};
    Ref<VisioFunctions> functions = make<VisioFunctions>(fakes.platform);

    std::vector<tarncom32::tests::RecordingMessageBox::Shown>& shown() { return fakes.messageBox.shown; }
    std::vector<std::string> reports() const { return fakes.messageBox.headings(); }
    ObjectRef startVisio() { return host.start(u"Visio.Application"); }
    /// A new drawing, with one empty page, in `visio`.
    static ObjectRef newDrawing(const ObjectRef& visio) {
        return LateBound(visio).get(u"Documents").call(u"Add", u"").object();
    }
    static ObjectRef page(const ObjectRef& document, std::int16_t number) {
        return LateBound(document).get(u"Pages").call(u"Item", number).object();
    }
    /// A named rectangle in `container`, a page or a group.
    static ObjectRef draw(const ObjectRef& container, StringView name) {
        const ObjectRef shape = LateBound(container).call(u"DrawRectangle", 0.0, 0.0, 1.0, 1.0).object();
        shape->put(u"Name", name);
        return shape;
    }
    static ObjectRef drawGroup(const ObjectRef& container, StringView name) {
        const ObjectRef shape = draw(container, name);
        shape->call(u"ConvertToGroup");
        return shape;
    }
    /// Gives a sheet a user cell with a formula.
    static void setUserCell(const ObjectRef& sheet, StringView row, StringView formula) {
        sheet->call(u"AddNamedRow", std::int16_t{242}, row, std::int16_t{0});
        LateBound(sheet).get(u"Cells", u"User." + String(row)).put(u"Formula", formula);
    }
};

class SessionTest : public testing::Test, protected Session {};

} // namespace tarncom32::visio::tests
