#include "standin/drawing/contents_reader.h"

#include <algorithm>
#include <utility>

namespace tarncom32::standin::drawing {

namespace {

Cell readCell(XmlPart& xml, Building& building) {
    Cell cell;
    xml.attributes([&](std::string_view name, std::string_view value) {
        if (name.size() != 1) return;
        switch (name[0]) {
        case 'N':
            cell.name = building.pool.fromUtf8(value);
            break;
        case 'V':
            cell.value = building.pool.fromUtf8(value);
            break;
        case 'U':
            cell.unit = building.pool.fromUtf8(value);
            break;
        case 'F':
            cell.formula = building.pool.fromUtf8(value);
            break;
        case 'E':
            cell.error = building.pool.fromUtf8(value);
            break;
        default:
            break;
        }
    });
    return cell;
}

Row readRow(XmlPart& xml, Building& building) {
    Row row;
    xml.attributes([&](std::string_view name, std::string_view value) {
        if (name == "N") row.name = building.pool.fromUtf8(value);
        if (name == "LocalName") row.localName = building.pool.fromUtf8(value);
        if (name == "T") row.type = building.pool.fromUtf8(value);
        if (name == "IX") row.index = xml.number(name, value);
        if (name == "Del") row.deleted = isTrue(value);
    });
    std::vector<Cell> cells;
    for (auto scope = xml.children(); xml.next(scope);)
        if (xml.name() == "Cell") push(cells, readCell(xml, building), building);
    row.cells = building.arena.copy(cells);
    return row;
}

Section readSection(XmlPart& xml, Building& building) {
    Section section;
    xml.attributes([&](std::string_view name, std::string_view value) {
        if (name == "N") section.name = building.pool.fromUtf8(value);
        if (name == "IX") section.index = xml.number(name, value);
        if (name == "Del") section.deleted = isTrue(value);
    });
    std::vector<Cell> cells;
    std::vector<Row> rows;
    for (auto scope = xml.children(); xml.next(scope);) {
        if (xml.name() == "Cell") push(cells, readCell(xml, building), building);
        if (xml.name() == "Row") push(rows, readRow(xml, building), building);
    }
    section.cells = building.arena.copy(cells);
    section.rows = building.arena.copy(rows);
    return section;
}

// Collects the cells and sections of one sheet while its owner's element is walked.
struct SheetParts {
    std::vector<Cell> cells;
    std::vector<Section> sections;

    // True when the current element was one of the sheet's.
    bool take(XmlPart& xml, Building& building) {
        if (xml.name() == "Cell")
            push(cells, readCell(xml, building), building);
        else if (xml.name() == "Section")
            push(sections, readSection(xml, building), building);
        else
            return false;
        return true;
    }

    void store(Building& building, Sheet& sheet) const {
        sheet.cells = building.arena.copy(cells);
        sheet.sections = building.arena.copy(sections);
    }
};

// The text between the formatting marks (cp, pp, tp), which are passed over; a field (fld) holds its last result.
void readText(XmlPart& xml, Building& building, Shape& shape) {
    std::u16string text;
    std::vector<TextField> fields;
    int fieldDepth = -1; // of the field that the walk is inside
    for (auto scope = xml.children(); xml.nextNode(scope);) {
        if (fieldDepth >= 0 && xml.depth() <= fieldDepth) fieldDepth = -1;
        if (xml.isText()) {
            const std::size_t before = text.size();
            appendUtf16(text, xml.text());
            if (text.size() > building.limits.maxTextUnits)
                xml.fail("has a shape with a text of more than " + std::to_string(building.limits.maxTextUnits) +
                         " characters");
            if (fieldDepth >= 0) fields.back().length += static_cast<std::uint32_t>(text.size() - before);
        } else if (xml.name() == "fld") {
            const std::string index = xml.attribute("IX");
            push(fields, {static_cast<std::uint32_t>(text.size()), 0, index.empty() ? noId : xml.number("IX", index)},
                 building);
            fieldDepth = xml.depth();
        }
    }
    shape.text = building.pool.fromUtf16(text);
    shape.fields = building.arena.copy(fields);
}

ShapeType typeOf(std::string_view value) {
    if (value == "Shape") return ShapeType::Shape;
    if (value == "Group") return ShapeType::Group;
    if (value == "Foreign") return ShapeType::Foreign;
    if (value == "Guide") return ShapeType::Guide;
    return ShapeType::Unspecified;
}

std::span<const Shape> readShapes(XmlPart& xml, Building& building, int depth);

Shape readShape(XmlPart& xml, Building& building, int depth) {
    if (++building.shapeCount > building.limits.maxShapes)
        xml.fail("gives the drawing more than " + std::to_string(building.limits.maxShapes) + " shapes");
    Shape shape;
    xml.attributes([&](std::string_view name, std::string_view value) {
        if (readSheetAttribute(xml, building, shape.sheet, name, value)) return;
        if (name == "ID") shape.id = xml.number(name, value);
        if (name == "Master") shape.master = xml.number(name, value);
        if (name == "MasterShape") shape.masterShape = xml.number(name, value);
        if (name == "Type") shape.type = typeOf(value);
        if (name == "Del") shape.deleted = isTrue(value);
    });
    if (shape.id == noId && !shape.deleted) xml.fail("has a shape without an ID");

    SheetParts parts;
    bool hasShapes = false;
    for (auto scope = xml.children(); xml.next(scope);) {
        if (parts.take(xml, building)) continue;
        if (xml.name() == "Text") {
            readText(xml, building, shape);
        } else if (xml.name() == "Shapes") {
            if (std::exchange(hasShapes, true)) xml.fail("has a shape with two lists of sub-shapes");
            shape.shapes = readShapes(xml, building, depth + 1);
        }
    }
    parts.store(building, shape.sheet);
    return shape;
}

std::span<const Shape> readShapes(XmlPart& xml, Building& building, int depth) {
    if (depth > building.limits.maxShapeDepth)
        xml.fail("nests groups more than " + std::to_string(building.limits.maxShapeDepth) + " deep");
    std::vector<Shape> shapes;
    for (auto scope = xml.children(); xml.next(scope);)
        if (xml.name() == "Shape") push(shapes, readShape(xml, building, depth), building);
    return building.arena.copy(shapes);
}

void collect(std::span<const Shape> shapes, std::vector<Contents::Entry>& entries) {
    for (const Shape& shape : shapes) {
        if (!shape.deleted) entries.push_back({shape.id, &shape});
        collect(shape.shapes, entries);
    }
}

} // namespace

bool isTrue(std::string_view value) noexcept {
    return value == "1" || value == "true";
}

bool readSheetAttribute(XmlPart& xml, Building& building, Sheet& sheet, std::string_view name, std::string_view value) {
    if (name == "Name")
        sheet.name = building.pool.fromUtf8(value);
    else if (name == "NameU")
        sheet.nameU = building.pool.fromUtf8(value);
    else if (name == "UniqueID")
        sheet.uniqueId = building.pool.fromUtf8(value);
    else if (name == "LineStyle")
        sheet.lineStyle = xml.number(name, value);
    else if (name == "FillStyle")
        sheet.fillStyle = xml.number(name, value);
    else if (name == "TextStyle")
        sheet.textStyle = xml.number(name, value);
    else if (name == "IsCustomName")
        sheet.customName = isTrue(value);
    else if (name == "IsCustomNameU")
        sheet.customNameU = isTrue(value);
    else
        return false;
    return true;
}

void readSheet(XmlPart& xml, Building& building, Sheet& sheet) {
    SheetParts parts;
    for (auto scope = xml.children(); xml.next(scope);)
        parts.take(xml, building);
    parts.store(building, sheet);
}

Contents readContents(XmlPart& xml, Building& building) {
    Contents contents;
    bool hasShapes = false;
    for (auto scope = xml.children(); xml.next(scope);) {
        if (xml.name() != "Shapes") continue;
        if (std::exchange(hasShapes, true)) xml.fail("has two lists of shapes");
        contents.shapes = readShapes(xml, building, 1);
    }

    std::vector<Contents::Entry> entries;
    collect(contents.shapes, entries);
    const auto less = [](const Contents::Entry& a, const Contents::Entry& b) { return a.id < b.id; };
    std::sort(entries.begin(), entries.end(), less);
    const auto twin =
        std::adjacent_find(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.id == b.id; });
    if (twin != entries.end()) xml.fail("has two shapes with the ID " + std::to_string(twin->id));
    contents.byId = building.arena.copy(entries);
    xml.finish();
    return contents;
}

} // namespace tarncom32::standin::drawing
