#include "support/big_document.h"

#include "standin/document.h"
#include "standin/page.h"
#include "standin/pages.h"
#include "standin/shape.h"

#include <deque>

namespace tarncom32::bench {

using automation::Ref;
using standin::Shape;

automation::ObjectRef drawBigDocument(standin::Application& application, std::int32_t shapeCount) {
    constexpr int shapesInGroup = 10;
    constexpr int groupsInGroup = 3;
    const Ref<standin::Document> document = application.add(u"");
    std::deque<Ref<Shape>> groups{document->pages()->item(1)->pageSheet()}; // those that are still empty
    for (std::int32_t drawn = 0; drawn < shapeCount; groups.pop_front())
        for (int i = 0; i < shapesInGroup && drawn < shapeCount; ++i, ++drawn) {
            const Ref<Shape> shape = groups.front()->drawRectangle(i, 0, i + 1, 1);
            if (i >= groupsInGroup) continue;
            shape->convertToGroup();
            groups.push_back(shape);
        }
    return document;
}

} // namespace tarncom32::bench
