// The walk over a page's shapes with all that is inside them, beside a bare loop over the stand-in that visits the same
// shapes by the same late-bound calls and keeps them in the same collection.

#include "automation/collection.h"
#include "automation/convert.h"
#include "platform/portable/portable_platform.h"
#include "standin/host.h"
#include "support/comparison.h"
#include "visio/visio_functions.h"

namespace tarncom32 {
namespace {

using automation::Collection;
using automation::ObjectRef;
using automation::Ref;
using automation::Variant;

ObjectRef object(const Variant& value) {
    return automation::toObject(value);
}

constexpr int kShapesInGroup = 10;

/// Fills `container` with groups in groups, ten shapes each, until `left` shapes are drawn.
void fill(const ObjectRef& container, int depth, int& left) {
    for (int i = 0; i < kShapesInGroup && left > 0; ++i) {
        const ObjectRef shape = object(container->call(u"DrawRectangle", 0.0, 0.0, 1.0, 1.0));
        --left;
        if (depth == 0 || left == 0) continue;
        shape->call(u"ConvertToGroup");
        fill(shape, depth - 1, left);
    }
}

ObjectRef drawing(const ObjectRef& visio, int shapes) {
    const ObjectRef document = object(object(visio->get(u"Documents"))->call(u"Add", u""));
    const ObjectRef page = object(object(document->get(u"Pages"))->call(u"Item", std::int16_t{1}));
    for (int left = shapes; left > 0;)
        fill(page, 4, left);
    return page;
}

void bareLoop(const ObjectRef& container, Collection& found) {
    const ObjectRef shapes = object(container->get(u"Shapes"));
    if (automation::toLong(shapes->get(u"Count")) < 1) return;
    automation::forEach(*shapes, [&](const Variant& shape) {
        found.add(shape);
        bareLoop(*shape.as<ObjectRef>(), found);
    });
}

} // namespace
} // namespace tarncom32

int main(int argc, char** argv) {
    using namespace tarncom32;
    standin::Host host;
    platform::portable::TerminalMessageBox messageBox;
    platform::portable::PortablePlatform platform(messageBox, host);
    const auto functions = automation::make<visio::VisioFunctions>(platform);
    const ObjectRef visio = host.startApplication();
    for (const int shapes : {1'000, 10'000, 100'000}) {
        const ObjectRef page = drawing(visio, shapes);
        bench::addComparison(std::to_string(shapes) + " shapes",
                             {{"GetAllTheShapesFromThePage",
                               [page, &functions] {
                                   const auto found = automation::make<automation::Collection>();
                                   functions->getAllTheShapesFromThePage(page, found, true, false, u"");
                                   return found->size();
                               }},
                              {"bare loop", [page] {
                                   const auto found = automation::make<automation::Collection>();
                                   bareLoop(page, *found);
                                   return found->size();
                               }}});
    }
    return bench::runComparisons(argc, argv);
}
