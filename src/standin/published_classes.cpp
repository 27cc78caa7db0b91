#include "standin/cell.h"
#include "standin/document.h"
#include "standin/documents.h"
#include "standin/master.h"
#include "standin/masters.h"
#include "standin/page.h"
#include "standin/pages.h"
#include "standin/shape.h"
#include "standin/shapes.h"
#include "standin/type_library.h"

namespace tarncom32::standin {

std::span<const automation::ClassInfo* const> publishedClasses() {
    static const automation::ClassInfo* const classes[] = {
        &Application::describe(), &Cell::describe(), &Document::describe(), &Documents::describe(), &Master::describe(),
        &Masters::describe(),     &Page::describe(), &Pages::describe(),    &Shape::describe(),     &Shapes::describe(),
    };
    return classes;
}

} // namespace tarncom32::standin
