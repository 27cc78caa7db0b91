#include "standin/shape.h"

#include "automation/convert.h"
#include "standin/cell.h"
#include "standin/drawing/names.h"
#include "standin/master.h"
#include "standin/model/drawing_operations.h"
#include "standin/model/random_guid.h"
#include "standin/page.h"
#include "standin/shapes.h"
#include "standin/visio_error.h"

#include <algorithm>

namespace tarncom32::standin {

namespace {

const SectionKind& sectionWithNames(std::int16_t section) {
    if (const SectionKind* kind = sectionOf(section)) return *kind;
    throw visio_error::invalidParameter(u"the stand-in keeps no section " + automation::decimalText(section) +
                                        u" with named rows");
}

Reach reachOf(std::int16_t existsLocally) {
    return existsLocally ? Reach::LocalOnly : Reach::Inherited;
}

} // namespace

ShapeNode& Shape::live() const {
    document_->requireOpen();
    if (node_.deleted) throw visio_error::inappropriateSource(u"the shape has been deleted");
    return node_;
}

ShapeNode& Shape::liveGroup() const {
    ShapeNode& node = live();
    if (node.kind != ShapeKind::Group && node.kind != ShapeKind::Page)
        throw visio_error::inappropriateSource(u"the shape is no group");
    return node;
}

std::int16_t Shape::addNamedRow(std::int16_t Section, StringView RowName, std::int16_t) {
    const SectionKind& section = sectionWithNames(Section);
    const std::vector<String> names = rowNames(live(), section);
    const auto isThere = [&](StringView name) {
        return std::ranges::any_of(names, [&](const String& n) { return automation::equalsIgnoreCase(n, name); });
    };
    String name(RowName);
    for (long long number = 1; name.empty() || (RowName.empty() && isThere(name)); ++number)
        name = u"Row_" + automation::decimalText(number);
    if (name.find(u'.') != String::npos) throw visio_error::invalidParameter(u"a row's name has no point in it");
    if (isThere(name)) throw visio_error::nameInUse(name);
    ownRow(live(), section, name, document_->model().texts());
    document_->model().changed = true;
    return automation::roundToInteger(static_cast<double>(names.size()));
}

std::int16_t Shape::addSection(std::int16_t Section) {
    const SectionKind& section = sectionWithNames(Section);
    if (standin::sectionExists(live(), section, Reach::LocalOnly))
        throw visio_error::invalidParameter(u"the shape has this section already");
    ownSection(live(), section, document_->model().texts());
    document_->model().changed = true;
    return Section;
}

std::optional<FoundCell> Shape::find(StringView cellName, NameKind names, Reach reach) const {
    const auto address = parseCellName(cellName);
    return address ? findCell(live(), *address, names, reach) : std::nullopt;
}

std::int16_t Shape::cellExists(StringView localeSpecificCellName, std::int16_t fExistsLocally) {
    live();
    return find(localeSpecificCellName, NameKind::Local, reachOf(fExistsLocally)) ? -1 : 0;
}

std::int16_t Shape::cellExistsU(StringView localeIndependentCellName, std::int16_t fExistsLocally) {
    live();
    return find(localeIndependentCellName, NameKind::Universal, reachOf(fExistsLocally)) ? -1 : 0;
}

Ref<Cell> Shape::cells(StringView localeSpecificCellName) {
    return cellOf(localeSpecificCellName, NameKind::Local);
}

Ref<Cell> Shape::cellsU(StringView localeIndependentCellName) {
    return cellOf(localeIndependentCellName, NameKind::Universal);
}

Ref<Cell> Shape::cellOf(StringView cellName, NameKind names) {
    ShapeNode& node = live();
    auto found = find(cellName, names, Reach::Inherited);
    if (!found) throw visio_error::unexpectedEndOfFile();
    return automation::make<Cell>(document_, node, std::move(found->address));
}

Ref<Master> Shape::containingMaster() {
    Container& container = *live().container;
    return container.kind == Container::Kind::Master ? document_->masterObject(container) : Ref<Master>();
}

Ref<Page> Shape::containingPage() {
    Container& container = *live().container;
    return container.kind == Container::Kind::Page ? document_->pageObject(container) : Ref<Page>();
}

Ref<Shape> Shape::containingShape() {
    const ShapeNode& node = live();
    if (node.isSheet()) return nullptr;
    return document_->objectOf(node.parent ? *node.parent : *node.container->sheet);
}

void Shape::convertToGroup() {
    ShapeNode& node = live();
    if (node.kind == ShapeKind::Group) return;
    if (node.kind != ShapeKind::Shape && node.kind != ShapeKind::Foreign)
        throw visio_error::inappropriateSource(u"only a shape can become a group");
    node.kind = ShapeKind::Group;
    document_->model().changed = true;
}

void Shape::deleteShape() {
    document_->model().removeShape(live());
}

Ref<Shape> Shape::drawRectangle(double xBegin, double yBegin, double xEnd, double yEnd) {
    ShapeNode& node = liveGroup();
    const Surface surface{document_->model(), *node.container, node.isSheet() ? nullptr : &node};
    return document_->objectOf(standin::drawRectangle(surface, xBegin, yBegin, xEnd, yEnd));
}

Ref<Shape> Shape::drop(const ObjectRef& ObjectToDrop, double xPos, double yPos) {
    ShapeNode& node = liveGroup();
    const Surface surface{document_->model(), *node.container, node.isSheet() ? nullptr : &node};
    return document_->objectOf(standin::drop(surface, Master::toDrop(ObjectToDrop, *document_), xPos, yPos));
}

std::int32_t Shape::id() {
    return static_cast<std::int32_t>(live().id);
}

std::int32_t Shape::index() {
    ShapeNode& node = live();
    if (node.isSheet()) return 0;
    const auto& beside = node.container->siblingsOf(node);
    return static_cast<std::int32_t>(std::ranges::find(beside, &node) - beside.begin()) + 1;
}

Ref<Master> Shape::master() {
    Container* master = live().master;
    return master ? document_->masterObject(*master) : Ref<Master>();
}

String Shape::name() {
    return nameOf(live(), NameKind::Local);
}

void Shape::setName(StringView lpLocaleSpecificName) {
    document_->model().rename(live(), lpLocaleSpecificName, NameKind::Local);
}

String Shape::nameId() {
    const ShapeNode& node = live();
    return node.isSheet() ? nameOf(node, NameKind::Universal) : nameIdOf(node);
}

String Shape::nameU() {
    return nameOf(live(), NameKind::Universal);
}

void Shape::setNameU(StringView lpLocaleIndependentName) {
    document_->model().rename(live(), lpLocaleIndependentName, NameKind::Universal);
}

ObjectRef Shape::parent() {
    const ShapeNode& node = live();
    if (node.parent) return document_->objectOf(*node.parent);
    return document_->ownerObject(*node.container);
}

std::int16_t Shape::rowCount(std::int16_t Section) {
    const SectionKind* section = sectionOf(Section);
    const ShapeNode& node = live();
    return section ? automation::roundToInteger(static_cast<double>(rowNames(node, *section).size())) : std::int16_t{0};
}

std::int16_t Shape::sectionExists(std::int16_t Section, std::int16_t fExistsLocally) {
    const ShapeNode& node = live();
    const SectionKind* section = sectionOf(Section);
    return section && standin::sectionExists(node, *section, reachOf(fExistsLocally)) ? -1 : 0;
}

Ref<Shapes> Shape::shapes() {
    ShapeNode& node = live();
    return automation::make<Shapes>(document_, *node.container, node.isSheet() ? nullptr : &node);
}

String Shape::text() {
    for (const ShapeNode* at = &live(); at; at = at->prototype)
        if (at->text.present()) return String(drawing::withoutFinalBreak(at->text.view()));
    return {};
}

void Shape::setText(StringView lpText) {
    ShapeNode& node = live();
    if (node.isSheet()) throw visio_error::inappropriateSource(u"the sheets of pages and documents have no text");
    node.text = document_->model().texts().fromUtf16(lpText);
    document_->model().changed = true;
}

std::int16_t Shape::type() {
    return static_cast<std::int16_t>(live().kind);
}

String Shape::uniqueId(std::int16_t fUniqueID) {
    ShapeNode& node = live();
    if (fUniqueID < 0 || fUniqueID > 2) throw visio_error::invalidParameter(u"0 gets, 1 makes and 2 deletes a GUID");
    if (fUniqueID == 1 && node.uniqueId.empty()) {
        node.uniqueId = document_->model().texts().fromUtf16(automation::guidText(randomGuid()));
        document_->model().changed = true;
    }
    if (fUniqueID == 2) node.uniqueId = {};
    return String(node.uniqueId.view());
}

} // namespace tarncom32::standin
