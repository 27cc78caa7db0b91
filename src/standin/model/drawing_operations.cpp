#include "standin/model/drawing_operations.h"

#include "standin/model/units.h"
#include "standin/visio_error.h"

#include <algorithm>
#include <cmath>

namespace tarncom32::standin {

namespace {

drawing::Cell cellOf(DocumentModel& model, StringView name, double value, StringView formula = {}) {
    drawing::Cell cell;
    cell.name = model.texts().fromUtf16(name);
    cell.value = model.texts().fromUtf16(exactNumberText(value));
    if (formula.empty())
        cell.unit = model.texts().fromUtf16(u"IN");
    else
        cell.formula = model.texts().fromUtf16(formula);
    return cell;
}

void requireFinite(std::initializer_list<double> numbers) {
    for (const double number : numbers)
        if (!std::isfinite(number)) throw visio_error::invalidParameter(u"a coordinate is no finite number");
}

} // namespace

ShapeNode& drawRectangle(Surface surface, double x1, double y1, double x2, double y2) {
    DocumentModel& model = surface.model;
    requireFinite({x1, y1, x2, y2});
    ShapeNode& shape = model.addShape(surface.container, surface.group, ShapeKind::Shape);
    shape.edited = std::make_unique<LocalSheet>();
    const double width = std::abs(x2 - x1);
    const double height = std::abs(y2 - y1);
    shape.edited->cells = {
        cellOf(model, u"PinX", std::min(x1, x2) + width / 2),
        cellOf(model, u"PinY", std::min(y1, y2) + height / 2),
        cellOf(model, u"Width", width),
        cellOf(model, u"Height", height),
        cellOf(model, u"LocPinX", width / 2, u"Width*0.5"),
        cellOf(model, u"LocPinY", height / 2, u"Height*0.5"),
    };
    return shape;
}

ShapeNode& drop(Surface surface, Container& master, double x, double y) {
    requireFinite({x, y});
    ShapeNode& shape = surface.model.addInstance(surface.container, surface.group, master);
    shape.edited = std::make_unique<LocalSheet>();
    shape.edited->cells = {cellOf(surface.model, u"PinX", x), cellOf(surface.model, u"PinY", y)};
    return shape;
}

} // namespace tarncom32::standin
