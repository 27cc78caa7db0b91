// Counts the shapes of whole drawings in another way, by XPath over each part's tree, and compares.

#include "standin/drawing/drawing_reader.h"
#include "standin/drawing/names.h"
#include "standin/drawing_package.h"
#include "support/source_folder.h"

#include <gtest/gtest.h>
#include <libxml/xpath.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

namespace tarncom32::standin::drawing {
namespace {

using Document = std::unique_ptr<xmlDoc, decltype([](xmlDoc* document) { xmlFreeDoc(document); })>;
using Context = std::unique_ptr<xmlXPathContext, decltype([](xmlXPathContext* c) { xmlXPathFreeContext(c); })>;
using Result = std::unique_ptr<xmlXPathObject, decltype([](xmlXPathObject* r) { xmlXPathFreeObject(r); })>;

// Every shape in document order: depth, id, the name attributes as written, and how many cells it has.
struct Line {
    int depth;
    std::string id, name, nameU;
    int cells;
    bool operator==(const Line&) const = default;
};

void PrintTo(const Line& line, std::ostream* out) {
    *out << line.depth << " #" << line.id << " '" << line.name << "' '" << line.nameU << "' " << line.cells;
}

std::string utf8(std::u16string_view text) {
    const std::u8string bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

class Tree {
public:
    explicit Tree(const std::string& xml)
        : document_(xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr, XML_PARSE_NONET)),
          context_(xmlXPathNewContext(document_.get())) {}

    std::vector<xmlNode*> select(const std::string& path, xmlNode* from = nullptr) const {
        context_->node = from != nullptr ? from : xmlDocGetRootElement(document_.get());
        const Result result(xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(path.c_str()), context_.get()));
        if (result->nodesetval == nullptr) return {};
        return {result->nodesetval->nodeTab, result->nodesetval->nodeTab + result->nodesetval->nodeNr};
    }

    std::string string(const std::string& path, xmlNode* from) const {
        const auto nodes = select(path, from);
        if (nodes.empty()) return {};
        std::unique_ptr<xmlChar, decltype(xmlFree)> text(xmlNodeGetContent(nodes[0]), xmlFree);
        return reinterpret_cast<const char*>(text.get());
    }

private:
    Document document_;
    Context context_;
};

std::vector<Line> countedIn(const std::string& xml) {
    const Tree tree(xml);
    std::vector<Line> lines;
    for (xmlNode* shape : tree.select("//*[local-name()='Shape']"))
        lines.push_back(
            {static_cast<int>(tree.select("ancestor::*[local-name()='Shape']", shape).size()),
             tree.string("@ID", shape), tree.string("@Name", shape), tree.string("@NameU", shape),
             static_cast<int>(
                 tree.select("*[local-name()='Cell'] | *[local-name()='Section']//*[local-name()='Cell']", shape)
                     .size())});
    return lines;
}

void walk(std::span<const Shape> shapes, int depth, std::vector<Line>& lines) {
    for (const Shape& shape : shapes) {
        std::size_t cells = shape.sheet.cells.size();
        for (const Section& section : shape.sheet.sections) {
            cells += section.cells.size();
            for (const Row& row : section.rows)
                cells += row.cells.size();
        }
        lines.push_back({depth, std::to_string(shape.id), utf8(shape.sheet.name.view()), utf8(shape.sheet.nameU.view()),
                         static_cast<int>(cells)});
        walk(shape.shapes, depth + 1, lines);
    }
}

// Compares every page and master of a drawing with its part, and the pages with their list.
void compare(const std::filesystem::path& path) {
    SCOPED_TRACE(path.filename().string());
    const tests::Parts parts = tests::unzipped(path);
    const DrawingFile file = readDrawing(path);
    std::size_t compared = 0;
    const auto contents = [&](const std::string& part, const Contents& read) {
        SCOPED_TRACE(part);
        std::vector<Line> lines;
        walk(read.shapes, 0, lines);
        EXPECT_EQ(lines, countedIn(parts.at(part)));
        EXPECT_EQ(read.byId.size(), lines.size());
        compared += lines.size();
    };
    for (const Page& page : file.pages)
        contents(page.part, page.contents);
    for (const Master& master : file.masters)
        contents(master.part, master.contents);
    EXPECT_EQ(file.shapeCount, compared);

    const Tree list(parts.at("visio/pages/pages.xml"));
    std::vector<std::string> expected;
    for (const char* which : {"*[not(@Background='1')]", "*[@Background='1']"})
        for (xmlNode* page : list.select(which))
            expected.push_back(list.string("@Name", page));
    std::vector<std::string> names;
    for (const Page& page : file.pages)
        names.push_back(utf8(page.name.view()));
    EXPECT_EQ(names, expected);
}

TEST(DrawingCount, AgreesOnTheExample) {
    compare(tests::sourceFolder() / "examples/drawings/office-network.vsdx");
}

TEST(DrawingCount, AgreesOnDrawingsFromElsewhere) {
    const char* given = std::getenv("TARNCOM32_DRAWINGS");
    const std::filesystem::path folder = given != nullptr ? given : TARNCOM32_DRAWINGS;
    if (folder.empty() || !std::filesystem::is_directory(folder))
        GTEST_SKIP()
            << "There is no folder with drawings from elsewhere; name one in TARNCOM32_DRAWINGS to compare them.";
    int drawings = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (!entry.path().extension().string().starts_with(".vs")) continue;
        compare(entry.path());
        ++drawings;
    }
    std::cout << drawings << " drawings compared in " << folder << '\n';
    EXPECT_GT(drawings, 0);
}

TEST(ExampleDrawing, HoldsWhatASessionShows) {
    const DrawingFile file = readDrawing(tests::sourceFolder() / "examples/drawings/office-network.vsdx");
    ASSERT_EQ(file.pages.size(), 3u);
    EXPECT_TRUE(file.pages[2].background);
    EXPECT_EQ(file.sheet.section(u"User")->row(u"Version")->cell(u"Value")->value, u"1.4");
    EXPECT_EQ(file.events.size(), 1u);
    std::vector<Line> lines;
    walk(file.pages[0].contents.shapes, 0, lines);
    EXPECT_GE(std::max_element(lines.begin(), lines.end(), [](auto& a, auto& b) { return a.depth < b.depth; })->depth,
              3);
    int defaults = 0;
    for (const Contents::Entry& entry : file.pages[0].contents.byId)
        defaults += universalName(file, *entry.shape).starts_with(u"PC.");
    EXPECT_EQ(defaults, 1);
}

} // namespace
} // namespace tarncom32::standin::drawing
