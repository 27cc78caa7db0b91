#include "standin/published_library.h"

#include "standin/cell.h"
#include "standin/document.h"
#include "standin/documents.h"
#include "standin/master.h"
#include "standin/masters.h"
#include "standin/page.h"
#include "standin/pages.h"
#include "standin/shape.h"
#include "standin/shapes.h"

namespace tarncom32::standin {

using automation::operator""_guid;

const frame::PublishedLibrary& publishedLibrary() {
    static const frame::PublishedLibrary library = [] {
        frame::PublishedLibrary published{u"TarnVisioStandIn", u"TarnVisioStandIn 1.0 stand-in for Visio",
                                          "36371234-1b89-4c17-96c4-a6ed6f80a966"_guid};
        published.classes.push_back({&Application::describe(), frame::Instancing::Creatable});
        for (const automation::ClassInfo* info :
             {&Cell::describe(), &Document::describe(), &Documents::describe(), &Master::describe(),
              &Masters::describe(), &Page::describe(), &Pages::describe(), &Shape::describe(), &Shapes::describe()})
            published.classes.push_back({info});
        return published;
    }();
    return library;
}

} // namespace tarncom32::standin
