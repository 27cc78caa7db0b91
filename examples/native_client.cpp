// Uses the installed library from C++:
//
//     g++ -std=c++20 native_client.cpp $(pkg-config --cflags --libs tarncom32) -o native_client

#include "automation/convert.h"
#include "automation/error.h"
#include "library/library.h"
#include "platform/portable/portable_platform.h"
#include "text/string_functions.h"

#include <iostream>

using namespace tarncom32;
using automation::toUtf8;

int main() {
    platform::portable::PortablePlatform platform;
    library::Library library(platform);
    try {
        // Late bound: by ProgID and by member names, as a script does.
        const automation::ObjectRef object = library.create(u"TarnCom32.StringFunctions");
        const automation::Variant last =
            object->call(u"ReturnStringBeforeLastDelimiter", u"C:\\plans\\hall.vsdx", u"\\");
        std::cout << "folder: " << toUtf8(automation::toText(last)) << '\n';

        // The collection that comes back is walked by name as well.
        const automation::ObjectRef settings =
            automation::toObject(object->call(u"CreateCollectionFromString", u"colour!red;width!2"));
        std::cout << "colour: " << toUtf8(automation::toText(settings->call(u"Item", u"colour"))) << '\n';

        // Typed: the same class as C++ knows it; a by-reference parameter is a reference.
        const auto functions = automation::make<text::StringFunctions>(platform);
        automation::String source = u"a-b-c";
        std::cout << "matches: " << functions->numberOfExactMatchesRemovedFromString(source, u"-") << '\n';
        std::cout << "fields: " << functions->numberOfElementsInDelimitedString(source, u"-") << '\n';

        // What a member raises arrives as an exception, with the number that scripts see.
        object->call(u"CreateCollectionFromString", u"key!1;key!2");
    } catch (const automation::Error& error) {
        std::cout << "error " << error.number() << ": " << error.what() << '\n';
    }
}
