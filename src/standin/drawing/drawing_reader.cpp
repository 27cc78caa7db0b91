#include "standin/drawing/drawing_reader.h"

#include "standin/drawing/contents_reader.h"
#include "standin/drawing/master_graph.h"
#include "standin/drawing/package.h"
#include "standin/drawing/part_name.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace tarncom32::standin::drawing {

namespace {

constexpr std::string_view idNamespace = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

// A number that is told to the add-in and decides nothing here: what cannot be read is 0.
std::int32_t lenientNumber(std::string_view value) {
    std::int32_t number = 0;
    std::from_chars(value.data(), value.data() + value.size(), number);
    return number;
}

DrawingFile emptyFile(const Limits& limits) {
    DrawingFile file;
    file.memory = std::make_unique<Arena>(limits.maxModelBytes);
    return file;
}

class Reader {
public:
    explicit Reader(ZipArchive& archive) : archive_(archive) {}

    DrawingFile read() {
        const std::string document = followOnly(archive_, "", readRelationships(archive_, ""), relation::document);
        if (document.empty())
            archive_.fail("",
                          "is not a Visio package (its _rels/.rels leads to no Visio document); open a .vsdx, .vsdm, "
                          ".vssx, .vssm, .vstx or .vstm file");
        readKind(document);
        fenced(document, [&] { readDocument(document); });

        const Relationships relationships = readRelationships(archive_, document);
        const std::string masters = followOnly(archive_, document, relationships, relation::masters);
        const std::string pages = followOnly(archive_, document, relationships, relation::pages);
        if (pages.empty() && file_.kind != DocumentKind::Stencil)
            archive_.fail(relationshipsPart(document), "leads to no pages, which every drawing has");
        if (!masters.empty()) fenced(masters, [&] { readMasters(masters); });
        if (!pages.empty()) fenced(pages, [&] { readPages(pages); });

        if (const MasterFault fault = checkMasters(file_, archive_.limits()); !fault.problem.empty())
            archive_.fail(fault.part, fault.problem);
        std::stable_partition(file_.pages.begin(), file_.pages.end(),
                              [](const Page& page) { return !page.background; });
        file_.shapeCount = building_.shapeCount;
        return std::move(file_);
    }

private:
    // Runs what reads a part, and says which part it was that took up all memory that a drawing may have.
    template <typename Action>
    void fenced(const std::string& part, Action action) {
        try {
            action();
        } catch (const ArenaFull&) {
            archive_.fail(part, "makes the drawing need more than " +
                                    std::to_string(archive_.limits().maxModelBytes >> 20) + " MiB of memory");
        }
    }

    void readKind(const std::string& document) {
        static constexpr struct {
            std::string_view type;
            DocumentKind kind;
            bool macros;
        } kinds[] = {
            {"application/vnd.ms-visio.drawing.main+xml", DocumentKind::Drawing, false},
            {"application/vnd.ms-visio.stencil.main+xml", DocumentKind::Stencil, false},
            {"application/vnd.ms-visio.template.main+xml", DocumentKind::Template, false},
            {"application/vnd.ms-visio.drawing.macroEnabled.main+xml", DocumentKind::Drawing, true},
            {"application/vnd.ms-visio.stencil.macroEnabled.main+xml", DocumentKind::Stencil, true},
            {"application/vnd.ms-visio.template.macroEnabled.main+xml", DocumentKind::Template, true},
        };
        const std::string type = contentTypeOf(archive_, document);
        for (const auto& known : kinds) {
            if (partKey(known.type) != partKey(type)) continue;
            file_.kind = known.kind;
            file_.macroEnabled = known.macros;
            return;
        }
        archive_.fail(document, "has the content type \"" + printable(type) +
                                    "\", which is no Visio drawing, stencil or template");
    }

    void readDocument(const std::string& part) {
        XmlPart xml(archive_, part, visioNamespaces, "VisioDocument");
        for (auto scope = xml.children(); xml.next(scope);) {
            if (xml.name() == "DocumentSheet") {
                takeSheetAttributes(xml, file_.sheet);
                readSheet(xml, building_, file_.sheet);
            } else if (xml.name() == "StyleSheets") {
                readStyles(xml);
            } else if (xml.name() == "EventList") {
                readEvents(xml);
            }
        }
        xml.finish();
    }

    void readStyles(XmlPart& xml) {
        std::unordered_set<std::uint32_t> ids;
        for (auto scope = xml.children(); xml.next(scope);) {
            if (xml.name() != "StyleSheet") continue;
            StyleSheet style;
            xml.attributes([&](std::string_view name, std::string_view value) {
                if (readSheetAttribute(xml, building_, style.sheet, name, value)) return;
                if (name == "ID") style.id = xml.number(name, value);
            });
            demandId(xml, "style", style.id, ids);
            readSheet(xml, building_, style.sheet);
            push(file_.styles, style, building_);
        }
    }

    void readEvents(XmlPart& xml) {
        for (auto scope = xml.children(); xml.next(scope);) {
            if (xml.name() != "EventItem") continue;
            EventItem item;
            xml.attributes([&](std::string_view name, std::string_view value) {
                if (name == "ID") item.id = xml.number(name, value);
                if (name == "EventCode") item.eventCode = lenientNumber(value);
                if (name == "Action") item.action = lenientNumber(value);
                if (name == "Enabled") item.enabled = isTrue(value);
                if (name == "Target") item.target = pool_.fromUtf8(value);
                if (name == "TargetArgs") item.targetArgs = pool_.fromUtf8(value);
            });
            push(file_.events, item, building_);
        }
    }

    void readPages(const std::string& part) {
        const Relationships relationships = readRelationships(archive_, part);
        std::unordered_set<std::uint32_t> ids;
        std::set<std::string> used;
        XmlPart xml(archive_, part, visioNamespaces, "Pages");
        for (auto scope = xml.children(); xml.next(scope);) {
            if (xml.name() != "Page") continue;
            Page page;
            xml.attributes([&](std::string_view name, std::string_view value) {
                if (name == "ID") page.id = xml.number(name, value);
                if (name == "BackPage") page.backPage = xml.number(name, value);
                if (name == "Background") page.background = isTrue(value);
                if (name == "Name") page.name = pool_.fromUtf8(value);
                if (name == "NameU") page.nameU = pool_.fromUtf8(value);
                if (name == "IsCustomName") page.customName = isTrue(value);
                if (name == "IsCustomNameU") page.customNameU = isTrue(value);
            });
            demandId(xml, "page", page.id, ids);
            completeNames(page.name, page.nameU, "Page-" + std::to_string(file_.pages.size() + 1));
            page.part = readSheetAndRel(xml, page.sheet, relationships, relation::page, used);
            file_.pages.push_back(std::move(page));
        }
        xml.finish();
        if (file_.pages.empty() && file_.kind != DocumentKind::Stencil) xml.fail("lists no page");
        checkBackgrounds(part);
        for (Page& page : file_.pages)
            readContentsPart(page.part, "PageContents", page.contents);
    }

    void readMasters(const std::string& part) {
        const Relationships relationships = readRelationships(archive_, part);
        std::unordered_set<std::uint32_t> ids;
        std::set<std::string> used;
        XmlPart xml(archive_, part, visioNamespaces, "Masters");
        for (auto scope = xml.children(); xml.next(scope);) {
            if (xml.name() != "Master") continue;
            Master master;
            xml.attributes([&](std::string_view name, std::string_view value) {
                if (name == "ID") master.id = xml.number(name, value);
                if (name == "Hidden") master.hidden = isTrue(value);
                if (name == "Name") master.name = pool_.fromUtf8(value);
                if (name == "NameU") master.nameU = pool_.fromUtf8(value);
                if (name == "UniqueID") master.uniqueId = pool_.fromUtf8(value);
                if (name == "BaseID") master.baseId = pool_.fromUtf8(value);
                if (name == "Prompt") master.prompt = pool_.fromUtf8(value);
            });
            demandId(xml, "master", master.id, ids);
            completeNames(master.name, master.nameU, "Master." + std::to_string(master.id));
            master.part = readSheetAndRel(xml, master.sheet, relationships, relation::master, used);
            file_.masters.push_back(std::move(master));
        }
        xml.finish();
        for (Master& master : file_.masters)
            readContentsPart(master.part, "MasterContents", master.contents);
    }

    // The PageSheet of a page or master, and the part that its Rel leads to.
    std::string readSheetAndRel(XmlPart& xml, Sheet& sheet, const Relationships& relationships, std::string_view type,
                                std::set<std::string>& used) {
        std::string part;
        for (auto scope = xml.children(); xml.next(scope);) {
            if (xml.name() == "PageSheet") {
                takeSheetAttributes(xml, sheet);
                readSheet(xml, building_, sheet);
            } else if (xml.name() == "Rel" && part.empty()) {
                const std::string id = xml.attribute("id", idNamespace);
                const auto found = relationships.find(id);
                if (found == relationships.end() || found->second.type != type)
                    xml.fail("refers to a relationship \"" + printable(id) + "\" that " +
                             relationshipsPart(xml.part()) + " does not have");
                part = followRelationship(archive_, xml.part(), found->second);
            }
        }
        if (part.empty()) xml.fail("lists a page or master without a Rel to the part with its shapes");
        if (!used.insert(partKey(part)).second) archive_.fail(part, "is used twice");
        return part;
    }

    void readContentsPart(const std::string& part, std::string_view root, Contents& contents) {
        fenced(part, [&] {
            XmlPart xml(archive_, part, visioNamespaces, root);
            contents = readContents(xml, building_);
        });
    }

    // A background page can have a background of its own; going from one to the next must come to an end.
    void checkBackgrounds(const std::string& part) {
        std::unordered_map<std::uint32_t, std::uint32_t> behind;
        for (const Page& page : file_.pages)
            behind.emplace(page.id, page.backPage);
        std::unordered_set<std::uint32_t> known; // pages from which the way is known to end
        for (const Page& page : file_.pages) {
            std::unordered_set<std::uint32_t> way;
            for (auto at = behind.find(page.id); at != behind.end() && !known.contains(at->first);
                 at = behind.find(at->second))
                if (!way.insert(at->first).second)
                    archive_.fail(part,
                                  "makes the page with the ID " + std::to_string(at->first) + " its own background");
            known.merge(way);
        }
    }

    void takeSheetAttributes(XmlPart& xml, Sheet& sheet) {
        xml.attributes([&](std::string_view name, std::string_view value) {
            readSheetAttribute(xml, building_, sheet, name, value);
        });
    }

    static void demandId(const XmlPart& xml, std::string_view what, std::uint32_t id,
                         std::unordered_set<std::uint32_t>& ids) {
        if (id == noId) xml.fail(std::string("lists a ").append(what) + " without an ID");
        if (!ids.insert(id).second)
            xml.fail(std::string("lists two ").append(what) + "s with the ID " + std::to_string(id));
    }

    // Visio writes both names; a file from elsewhere may have one, or none at all.
    void completeNames(Text& name, Text& nameU, const std::string& fallback) {
        if (name.empty()) name = nameU.empty() ? pool_.fromUtf8(fallback) : nameU;
        if (nameU.empty()) nameU = name;
    }

    ZipArchive& archive_;
    DrawingFile file_ = emptyFile(archive_.limits());
    TextPool pool_{*file_.memory};
    Building building_{*file_.memory, pool_, archive_.limits()};
};

} // namespace

DrawingFile readDrawing(const std::filesystem::path& path, const Limits& limits) {
    ZipArchive archive(path, limits);
    return Reader(archive).read();
}

DrawingFile readDrawing(std::span<const std::byte> bytes, std::string label, const Limits& limits) {
    ZipArchive archive(bytes, std::move(label), limits);
    return Reader(archive).read();
}

} // namespace tarncom32::standin::drawing
