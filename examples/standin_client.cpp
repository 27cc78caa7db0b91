// An add-in's request without Visio: opens a drawing in the stand-in and lists the shapes of the page that Visio's
// argument string names.
//
//     g++ -std=c++20 standin_client.cpp $(pkg-config --cflags --libs tarnvisiostandin) -o standin_client
//     ./standin_client drawings/office-network.vsdx "/doc=1 /page=2"

#include "automation/collection.h"
#include "automation/convert.h"
#include "automation/error.h"
#include "library/library.h"
#include "platform/portable/portable_platform.h"
#include "standin/host.h"

#include <iostream>

using namespace tarncom32;
using automation::toObject;
using automation::toUtf8;
using automation::Variant;

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: standin_client DRAWING ARGUMENT-STRING\n";
        return 2;
    }
    // What the library finds when it looks for a running Visio. Declared first, because it outlives the objects.
    standin::Host host;
    platform::portable::TerminalMessageBox messageBox;
    platform::portable::PortablePlatform platform(messageBox, host);
    library::Library library(platform);
    try {
        const automation::ObjectRef visio = host.start(u"Visio.Application");
        toObject(visio->get(u"Documents"))->call(u"Open", automation::fromUtf8(argv[1]));

        // `call` copies its arguments; what a member writes to a by-reference parameter comes back by `invoke`.
        const automation::ObjectRef functions = library.create(u"TarnCom32.VisioFunctions");
        Variant request[] = {automation::fromUtf8(argv[2]), // sAddonString
                             automation::String(),          // sParameters
                             visio,                         // ovAppVisio
                             automation::ObjectRef(),       // ovShape
                             automation::ObjectRef(),       // ovPage
                             automation::ObjectRef()};      // ovDoc
        functions->invoke(u"GetVisioObjectsFromAddonString", automation::Access::Method, request);
        const automation::ObjectRef page = toObject(request[4]);
        if (!page) {
            std::cerr << "the argument string leads to no page\n";
            return 1;
        }
        std::cout << "page: " << toUtf8(automation::toText(page->get(u"NameU"))) << '\n';

        const auto shapes = automation::make<automation::Collection>();
        functions->call(u"GetAllTheShapesFromThePage", page, shapes);
        automation::forEach(*shapes, [](const Variant& shape) {
            std::cout << "shape: " << toUtf8(automation::toText(toObject(shape)->get(u"NameU"))) << '\n';
        });
    } catch (const automation::Error& error) { // a drawing that cannot be opened, for example
        std::cerr << "error " << error.number() << ": " << error.what() << '\n';
        return 1;
    }
}
