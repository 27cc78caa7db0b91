// Counts the shapes and cells of whole drawings in another way, by XPath over each part's tree, and compares.

#include "standin/drawing/drawing_reader.h"
#include "standin/drawing_package.h"
#include "support/source_folder.h"

#include <gtest/gtest.h>
#include <libxml/xpath.h>

#include <cstdlib>
#include <memory>

namespace tarncom32::standin::drawing {
namespace {

struct Counts {
    std::size_t shapes = 0, cells = 0;
    bool operator==(const Counts&) const = default;
};

void PrintTo(const Counts& counts, std::ostream* out) {
    *out << counts.shapes << " shapes, " << counts.cells << " cells";
}

Counts countedIn(const std::string& xml) {
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr, XML_PARSE_NONET), xmlFreeDoc);
    const std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)> context(xmlXPathNewContext(document.get()),
                                                                                   xmlXPathFreeContext);
    const auto count = [&](const std::string& nodes) {
        const std::string path = "count(" + nodes + ")";
        const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> result(
            xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(path.c_str()), context.get()), xmlXPathFreeObject);
        return static_cast<std::size_t>(result->floatval);
    };
    const std::string shapes = "//*[local-name()='Shape']";
    const std::string cell = "*[local-name()='Cell']";
    return {count(shapes), count(shapes + "/" + cell + " | " + shapes + "/*[local-name()='Section']//" + cell)};
}

void add(std::span<const Shape> shapes, Counts& counts) {
    for (const Shape& shape : shapes) {
        ++counts.shapes;
        counts.cells += shape.sheet.cells.size();
        for (const Section& section : shape.sheet.sections) {
            counts.cells += section.cells.size();
            for (const Row& row : section.rows)
                counts.cells += row.cells.size();
        }
        add(shape.shapes, counts);
    }
}

void compare(const std::filesystem::path& path) {
    SCOPED_TRACE(path.filename().string());
    const tests::Parts parts = tests::unzipped(path);
    const DrawingFile file = readDrawing(path);
    std::size_t shapes = 0;
    const auto contents = [&](const std::string& part, const Contents& read) {
        Counts counts;
        add(read.shapes, counts);
        EXPECT_EQ(counts, countedIn(parts.at(part))) << part;
        EXPECT_EQ(read.byId.size(), counts.shapes) << part;
        shapes += counts.shapes;
    };
    for (const Page& page : file.pages)
        contents(page.part, page.contents);
    for (const Master& master : file.masters)
        contents(master.part, master.contents);
    EXPECT_EQ(file.shapeCount, shapes);
    EXPECT_GT(shapes, 0U);
}

TEST(DrawingCount, AgreesOnTheExample) {
    compare(tests::sourceFolder() / "examples/drawings/office-network.vsdx");
}

TEST(DrawingCount, AgreesOnDrawingsFromElsewhere) {
    const char* given = std::getenv("TARNCOM32_DRAWINGS");
    const std::filesystem::path folder = given != nullptr ? given : TARNCOM32_DRAWINGS;
    if (!std::filesystem::is_directory(folder))
        GTEST_SKIP() << "There is no folder with drawings from elsewhere; name one in TARNCOM32_DRAWINGS.";
    int drawings = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (!entry.path().extension().string().starts_with(".vs")) continue;
        compare(entry.path());
        ++drawings;
    }
    EXPECT_GT(drawings, 0);
}

} // namespace
} // namespace tarncom32::standin::drawing
