#include "standin/drawing_package.h"

#include <zip.h>

#include <stdexcept>

namespace tarncom32::tests {

namespace {

std::string relationships(std::initializer_list<std::pair<std::string_view, std::string_view>> targets) {
    std::string xml = "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>";
    int number = 0;
    for (const auto& [type, target] : targets)
        xml += "<Relationship Id='rId" + std::to_string(++number) +
               "' Type='http://schemas.microsoft.com/visio/2010/relationships/" + std::string(type) + "' Target='" +
               std::string(target) + "'/>";
    return xml + "</Relationships>";
}

} // namespace

std::string visioPart(std::string_view root, std::string_view content) {
    std::string xml = "<?xml version='1.0' encoding='utf-8'?><";
    xml.append(root).append(" xmlns='http://schemas.microsoft.com/office/visio/2012/main' xmlns:r='http://schemas."
                            "openxmlformats.org/officeDocument/2006/relationships' xml:space='preserve'>");
    return xml.append(content).append("</").append(root).append(">");
}

Parts smallDrawing() {
    return {
        {"[Content_Types].xml",
         "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'>"
         "<Default Extension='xml' ContentType='application/xml'/>"
         "<Override PartName='/visio/document.xml' ContentType='application/vnd.ms-visio.drawing.main+xml'/></Types>"},
        {"_rels/.rels", relationships({{"document", "visio/document.xml"}})},
        {"visio/document.xml", visioPart("VisioDocument", "<DocumentSheet NameU='TheDoc'/>")},
        {"visio/_rels/document.xml.rels",
         relationships({{"masters", "masters/masters.xml"}, {"pages", "pages/pages.xml"}})},
        {"visio/masters/masters.xml", visioPart("Masters", "<Master ID='2' NameU='PC' Name='Rechner'><Rel r:id='rId1'/>"
                                                           "</Master><Master ID='4' NameU='Desk'><Rel r:id='rId2'/>"
                                                           "</Master>")},
        {"visio/masters/_rels/masters.xml.rels", relationships({{"master", "master1.xml"}, {"master", "master2.xml"}})},
        {"visio/masters/master1.xml",
         visioPart("MasterContents", "<Shapes><Shape ID='5' Type='Group'><Shapes><Shape ID='6' Type='Shape'/>"
                                     "<Shape ID='7' NameU='Screen' Type='Shape'/></Shapes></Shape></Shapes>")},
        {"visio/masters/master2.xml",
         visioPart("MasterContents",
                   "<Shapes><Shape ID='5' Type='Group'><Shapes><Shape ID='6' Type='Group' Master='2'>"
                   "<Shapes><Shape ID='7' MasterShape='7'/></Shapes></Shape></Shapes></Shape></Shapes>")},
        {"visio/pages/pages.xml",
         visioPart("Pages", "<Page ID='0' NameU='One' Name='Eins' BackPage='4'><PageSheet/><Rel r:id='rId1'/></Page>"
                            "<Page ID='4' NameU='Back' Background='1'><Rel r:id='rId2'/></Page>")},
        {"visio/pages/_rels/pages.xml.rels", relationships({{"page", "page1.xml"}, {"page", "page2.xml"}})},
        {"visio/pages/page1.xml", visioPart("PageContents", "<Shapes><Shape ID='1' Type='Shape'/></Shapes>")},
        {"visio/pages/page2.xml", visioPart("PageContents", "")},
    };
}

void change(Parts& parts, const std::string& part, std::string_view from, std::string_view to) {
    std::string& text = parts.at(part);
    const std::size_t at = text.find(from);
    if (at == std::string::npos || text.find(from, at + 1) != std::string::npos)
        throw std::logic_error("not exactly once in " + part + ": " + std::string(from));
    text.replace(at, from.size(), to);
}

std::string numbered(std::string_view pattern, int number) {
    std::string text;
    for (const char c : pattern)
        text += c == '#' ? std::to_string(number) : std::string(1, c);
    return text;
}

Parts drawingWithMasters(int count, const std::function<std::string(int number)>& shapes) {
    Parts parts = smallDrawing();
    std::string list, rels = relationships({});
    rels.resize(rels.rfind('<'));
    for (int number = 1; number <= count; ++number) {
        list += numbered("<Master ID='#' NameU='M#'><Rel r:id='r#'/></Master>", number);
        rels += numbered("<Relationship Id='r#' Type='http://schemas.microsoft.com/visio/2010/relationships/master' "
                         "Target='m#.xml'/>",
                         number);
        parts[numbered("visio/masters/m#.xml", number)] =
            visioPart("MasterContents", "<Shapes>" + shapes(number) + "</Shapes>");
    }
    parts["visio/masters/masters.xml"] = visioPart("Masters", list);
    parts["visio/masters/_rels/masters.xml.rels"] = rels + "</Relationships>";
    return parts;
}

std::vector<std::byte> zipped(const Parts& parts) {
    zip_source_t* source = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(source);
    zip_t* archive = zip_open_from_source(source, ZIP_TRUNCATE, nullptr);
    for (const auto& [name, text] : parts)
        zip_file_add(archive, name.c_str(), zip_source_buffer(archive, text.data(), text.size(), 0), ZIP_FL_ENC_UTF_8);
    if (zip_close(archive) != 0) throw std::runtime_error(zip_strerror(archive));

    zip_stat_t stat;
    zip_source_stat(source, &stat);
    std::vector<std::byte> bytes(stat.size);
    zip_source_open(source);
    zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    zip_source_free(source);
    return bytes;
}

} // namespace tarncom32::tests
