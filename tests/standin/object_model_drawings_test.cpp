// Whole drawings: what a walk through the object model meets is what the reader found in the file, and every shape is
// found again by its names.

#include "automation/collection.h"
#include "automation/convert.h"
#include "standin/drawing/drawing_reader.h"
#include "standin/drawing/names.h"
#include "standin/object_model.h"
#include "support/source_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tarncom32::standin {
namespace {

using namespace tests;

struct Line {
    int depth;
    String name;
    String nameU;
    bool operator==(const Line&) const = default;
};

void PrintTo(const Line& line, std::ostream* out) {
    *out << line.depth << " '" << automation::toUtf8(line.name) << "' '" << automation::toUtf8(line.nameU) << "'";
}

void read(const drawing::DrawingFile& file, std::span<const drawing::Shape> shapes, int depth,
          std::vector<Line>& lines) {
    for (const drawing::Shape& shape : shapes) {
        if (shape.deleted) continue;
        lines.push_back({depth, drawing::localName(file, shape), drawing::universalName(file, shape)});
        read(file, shape.shapes, depth + 1, lines);
    }
}

void walk(const ObjectRef& shapes, int depth, std::vector<Line>& lines) {
    automation::forEach(*shapes, [&](const Variant& item) {
        const ObjectRef shape = objectIn(item);
        const String name = automation::toText(shape->get(u"Name"));
        const String nameU = automation::toText(shape->get(u"NameU"));
        EXPECT_EQ(objectIn(shapes->call(u"Item", name)), shape) << automation::toUtf8(name);
        EXPECT_EQ(objectIn(shapes->call(u"ItemU", nameU)), shape) << automation::toUtf8(nameU);
        EXPECT_EQ(objectIn(shapes->call(u"Item", shape->get(u"NameID"))), shape);
        lines.push_back({depth, name, nameU});
        walk(objectIn(shape->get(u"Shapes")), depth + 1, lines);
    });
}

void compare(const std::filesystem::path& path) {
    SCOPED_TRACE(path.filename().string());
    const drawing::DrawingFile file = drawing::readDrawing(path);
    const auto application = startApplication();
    const ObjectRef document = objectIn(objectIn(application->get(u"Documents"))->call(u"Open", path.u16string()));
    const ObjectRef pages = objectIn(document->get(u"Pages"));
    ASSERT_EQ(static_cast<std::size_t>(automation::toLong(pages->get(u"Count"))), file.pages.size());
    for (std::size_t i = 0; i < file.pages.size(); ++i) {
        const ObjectRef page = objectIn(pages->call(u"Item", static_cast<std::int32_t>(i + 1)));
        EXPECT_EQ(automation::toText(page->get(u"Name")), file.pages[i].name.view());
        std::vector<Line> expected, walked;
        read(file, file.pages[i].contents.shapes, 1, expected);
        walk(objectIn(page->get(u"Shapes")), 1, walked);
        EXPECT_EQ(walked, expected);
    }
}

TEST(ObjectModelDrawings, TheExampleIsWhatItsFileHas) {
    compare(sourceFolder() / "examples" / "drawings" / "office-network.vsdx");
}

TEST(ObjectModelDrawings, DrawingsFromElsewhereAreWhatTheirFilesHave) {
    const char* folder = std::getenv("TARNCOM32_DRAWINGS");
    if (!folder) folder = TARNCOM32_DRAWINGS;
    if (!std::filesystem::is_directory(folder))
        GTEST_SKIP() << "There is no folder with drawings from elsewhere; name one in TARNCOM32_DRAWINGS.";
    int compared = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".vsdx") {
            compare(entry.path());
            ++compared;
        }
    EXPECT_GT(compared, 0);
}

} // namespace
} // namespace tarncom32::standin
