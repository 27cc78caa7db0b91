#include "standin/drawing/drawing_reader.h"
#include "standin/drawing/part_name.h"
#include "standin/drawing_package.h"
#include "support/source_folder.h"

#include <gmock/gmock.h>

#include <fstream>
#include <functional>
#include <iterator>

namespace tarncom32::standin::drawing {
namespace {

using testing::HasSubstr;
using namespace tests;

constexpr const char* documentPart = "visio/document.xml";
constexpr const char* documentRels = "visio/_rels/document.xml.rels";
constexpr const char* pagesPart = "visio/pages/pages.xml";
constexpr const char* pagesRels = "visio/pages/_rels/pages.xml.rels";
constexpr const char* mastersPart = "visio/masters/masters.xml";
constexpr const char* mastersRels = "visio/masters/_rels/masters.xml.rels";
constexpr const char* master1 = "visio/masters/master1.xml";

// The message with which bytes are refused; "" when they are read.
std::string refusal(std::span<const std::byte> bytes, const Limits& limits = {}) {
    try {
        (void)readDrawing(bytes, "test.vsdx", limits);
        return {};
    } catch (const DrawingError& error) {
        return error.what();
    }
}

// What the message speaks of: the file itself when `part` is "".
std::string subject(const std::string& part) {
    return part.empty() ? "test.vsdx " : "test.vsdx: part " + part + " ";
}

std::string repeated(std::string_view text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

std::string nested(int depth) {
    std::string text;
    for (int i = 1; i <= depth; ++i)
        text += numbered("<Shapes><Shape ID='#'>", i);
    return text + repeated("</Shape></Shapes>", depth);
}

TEST(HostileDrawing, IsRefusedWithThePartAndTheReason) {
    using Spoil = std::function<void(Parts&)>;
    const auto edit = [](const std::string& part, const std::string& from, const std::string& to) -> Spoil {
        return [=](Parts& parts) { change(parts, part, from, to); };
    };
    const auto with = [](const std::string& part, const std::string& text) -> Spoil {
        return [=](Parts& parts) { parts[part] = text; };
    };
    const auto page = [&](const std::string& content) { return with(page1, visioPart("PageContents", content)); };
    const auto target = [&](const std::string& path) { return edit(pagesRels, "'page1.xml'", "'" + path + "'"); };
    const auto without = [](const std::string& part) -> Spoil { return [=](Parts& parts) { parts.erase(part); }; };
    std::string wide = "\xFF\xFE"; // a document type in UTF-16
    for (const char c : std::string("<!--x--><!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>"))
        wide.append({c, '\0'});
    const std::tuple<const char*, Spoil, const char*, const char*> rows[] = {
        {"no content types", without("[Content_Types].xml"), "[Content_Types].xml", "missing"},
        {"no relationships", without("_rels/.rels"), "", "not a Visio package"},
        {"another Office file", edit("_rels/.rels", "microsoft.com/visio/2010", "openxmlformats.org/officeDocument"),
         "", "not a Visio package"},
        {"not Visio's content type", edit("[Content_Types].xml", "vnd.ms-visio.drawing", "word"), documentPart,
         "content type"},
        {"no page part", without(page1), page1, "missing"},
        {"no way to the pages", without(documentRels), documentRels, "no pages"},
        {"two pages parts", edit(documentRels, "relationships/masters", "relationships/pages"), documentRels, "two"},
        {"no page", with(pagesPart, visioPart("Pages", "")), pagesPart, "no page"},
        {"unknown relationship", edit(pagesPart, "rId1", "rId8"), pagesPart, "rId8"},
        {"relationship of another type", edit(mastersRels, "master' Target='master2", "x' Target='m"), mastersPart,
         "rId2"},
        {"two relationships of one id", edit(pagesRels, "rId2", "rId1"), pagesRels, "rId1"},
        {"one part for two pages", target("page2.xml"), "visio/pages/page2.xml", "twice"},
        {"page part is another", target("pages.xml"), pagesPart, "PageContents"},
        {"leads out and back", target("../../../x/visio/pages/page1.xml"), pagesRels, "out of the package"},
        {"absolute path of a machine", target("/etc/passwd"), "etc/passwd", "missing"},
        {"file URL", target("file:///etc/passwd"), pagesRels, "URL"},
        {"share", target("//host/share/page1.xml"), pagesRels, "another machine"},
        {"backslash", target("..\\pages\\page1.xml"), pagesRels, "backslash"},
        {"encoded dots", target("%2e%2e/%2E%2E/page1.xml"), pagesRels, "percent"},
        {"encoded backslash", target("a%5cpage1.xml"), pagesRels, "percent"},
        {"cut encoding", target("page1.xml%2"), pagesRels, "percent"},
        {"folder", target("../pages/"), pagesRels, "folder"},
        {"empty target", target(""), pagesRels, "empty"},
        {"external target", target("page1.xml' TargetMode='External"), pagesRels, "outside"},
        {"parts that differ in case", with("visio/PAGES/page1.xml", ""), page1, "twice"},
        {"broken XML", page("<Shapes>"), page1, "not well-formed"},
        {"empty part", with(page1, ""), page1, "not well-formed"},
        {"text behind the root", with(page1, visioPart("PageContents", "") + "<more/>"), page1, "not well-formed"},
        {"entity from a file", with(page1, "<!DOCTYPE a [<!ENTITY a SYSTEM 'file:///etc/passwd'>]><a>&a;</a>"), page1,
         "document type"},
        {"document type in UTF-16", with(page1, wide), page1, "document type"},
        {"undeclared entity", page("<Shapes><Shape ID='1'><Text>&a;</Text></Shape></Shapes>"), page1, "Entity"},
        {"root in no namespace", with(page1, "<PageContents/>"), page1, "root element"},
        {"two shapes of one id", page("<Shapes><Shape ID='1'><Shapes><Shape ID='1'/></Shapes></Shape></Shapes>"), page1,
         "ID 1"},
        {"shape without id", page("<Shapes><Shape/></Shapes>"), page1, "without an ID"},
        {"id below zero", page("<Shapes><Shape ID='-1'/></Shapes>"), page1, "\"-1\""},
        {"id too large", page("<Shapes><Shape ID='4294967296'/></Shapes>"), page1, "4294967296"},
        {"no number, and broken", page("<Shapes><Shape ID='1&#10;b'/></Shapes>"), page1, "\"1?b\""},
        {"two lists of sub-shapes", page("<Shapes><Shape ID='1'><Shapes/><Shapes/></Shape></Shapes>"), page1, "two"},
        {"two lists of shapes", page("<Shapes/><Shapes/>"), page1, "two"},
        {"two pages of one id", edit(pagesPart, "ID='4'", "ID='0'"), pagesPart, "ID 0"},
        {"two masters of one id", edit(mastersPart, "ID='4'", "ID='2'"), mastersPart, "ID 2"},
        {"page without part", edit(pagesPart, "<Rel r:id='rId1'/>", ""), pagesPart, "without a Rel"},
        {"page behind itself", edit(pagesPart, "Background='1'", "Background='1' BackPage='4'"), pagesPart,
         "own background"},
        {"masters in a circle", edit(master1, "ID='6'", "ID='6' Master='4'"), master1, "itself"},
        {"endless groups", page(nested(101)), page1, "deep"},
    };
    ASSERT_EQ(refusal(zipped(smallDrawing())), "");
    for (const auto& [name, spoil, part, reason] : rows) {
        SCOPED_TRACE(name);
        Parts parts = smallDrawing();
        spoil(parts);
        const std::string message = refusal(zipped(parts));
        EXPECT_THAT(message, testing::AllOf(testing::StartsWith(subject(part)), HasSubstr(reason)));
        EXPECT_EQ(message.find('\n'), std::string::npos);
    }
}

TEST(HostileDrawing, DoesNotPassItsLimits) {
    const auto with = [](auto member, auto value) {
        Limits limits;
        limits.*member = static_cast<std::remove_reference_t<decltype(limits.*member)>>(value);
        return limits;
    };
    const std::string spaces(1 << 20, ' ');
    std::string cells; // each with a string of its own
    for (int i = 0; i < 20000; ++i)
        cells += numbered("<Cell N='#'/>", i);
    const std::tuple<const char*, std::string, Limits, const char*, const char*> rows[] = {
        {"file", "", with(&Limits::maxFileBytes, 1000), "", "larger than 1000 bytes"},
        {"entries", "", with(&Limits::maxParts, 11), "", "more than 11 entries"},
        {"declared size", spaces, with(&Limits::maxPartBytes, 1 << 19), page1, "unpacks to more than 524288 bytes"},
        {"all parts together", spaces, with(&Limits::maxTotalBytes, 1 << 20), page1, "more than 1 MiB in all"},
        {"zip bomb", spaces, with(&Limits::ratioFreeBytes, 1 << 16), page1, "zip bomb"},
        {"shapes", "<Shapes><Shape ID='1'/><Shape ID='2'/></Shapes>", with(&Limits::maxShapes, 7), page1,
         "more than 7 shapes"},
        {"groups", nested(4), with(&Limits::maxShapeDepth, 3), page1, "more than 3 deep"},
        {"text", "<Shapes><Shape ID='1'><Text>abc</Text></Shape></Shapes>", with(&Limits::maxTextUnits, 2), page1,
         "more than 2 characters"},
        {"cells", "<Shapes><Shape ID='1'>" + cells + "</Shape></Shapes>", with(&Limits::maxModelBytes, 1 << 20), page1,
         "more than 1 MiB of memory"},
        {"masters in masters", "", with(&Limits::maxMasterDepth, 1), "visio/masters/master2.xml", "more than 1 deep"},
    };
    for (const auto& [name, page, limits, part, reason] : rows) {
        SCOPED_TRACE(name);
        Parts parts = smallDrawing();
        parts[page1] = visioPart("PageContents", page);
        EXPECT_THAT(refusal(zipped(parts), limits),
                    testing::AllOf(testing::StartsWith(subject(part)), HasSubstr(reason)));
        EXPECT_EQ(refusal(zipped(parts)), "") << "it is the limit alone that refuses it";
    }
}

// Each of thirty masters holds two instances of the next: a small file that stands for a thousand million shapes.
TEST(HostileDrawing, DoesNotUnfoldMasters) {
    const Parts parts = drawingWithMasters(30, [](int number) {
        const char* instances =
            "<Shape ID='5'><Shapes><Shape ID='6' Master='#'/><Shape ID='7' Master='#'/></Shapes></Shape>";
        return numbered(instances, number + 1);
    });
    EXPECT_THAT(refusal(zipped(parts)), HasSubstr("stands for more than 1000000 shapes"));
}

TEST(HostileDrawing, OfAnotherKindIsToldFromAPackage) {
    const std::pair<std::string_view, const char*> rows[] = {
        {"", "not a Visio package"},
        {"Dear all, please find the drawing attached.", "not a Visio package"},
        {"PK\x03\x04 and no more", "truncated"},
        {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", "binary format"},
        {"<?xml version='1.0'?><VisioDocument/>", "older XML format"},
    };
    for (const auto& [text, reason] : rows)
        EXPECT_THAT(refusal(std::as_bytes(std::span(text))), HasSubstr(reason));
    for (const std::filesystem::path& file :
         {sourceFolder() / "no such drawing.vsdx", sourceFolder(), std::filesystem::path("/dev/null")})
        EXPECT_THROW((void)readDrawing(file), DrawingError) << file;
}

std::vector<std::byte> exampleBytes() {
    std::ifstream stream(sourceFolder() / "examples/drawings/office-network.vsdx", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

TEST(DamagedDrawing, CutAnywhereIsRefused) {
    const std::vector<std::byte> whole = exampleBytes();
    ASSERT_EQ(refusal(whole), "");
    for (std::size_t length = 0; length < whole.size(); length += length + 600 < whole.size() ? 97 : 1)
        ASSERT_NE(refusal(std::span(whole).first(length)), "") << "cut to " << length << " bytes";
}

// A changed byte is refused, or it lies where nothing is read from; in neither case may anything else come of it.
TEST(DamagedDrawing, WithAChangedByteIsReadOrRefused) {
    int refused = 0;
    for (const auto& original : {exampleBytes(), zipped(smallDrawing())}) {
        const std::size_t step = original.size() > 20000 ? 61 : 3;
        for (std::size_t at = 0; at < original.size(); at += step) {
            std::vector<std::byte> bytes = original;
            bytes[at] ^= static_cast<std::byte>(1u << (at % 8));
            refused += !refusal(bytes).empty();
        }
    }
    EXPECT_GT(refused, 500);
}

} // namespace
} // namespace tarncom32::standin::drawing
