#include "standin/drawing/xml_part.h"

#include "standin/drawing/drawing_error.h"

#include <libxml/xmlerror.h>
#include <libxml/xmlreader.h>

#include <charconv>
#include <mutex>
#include <new>

namespace tarncom32::standin::drawing {

namespace {

constexpr std::string_view documentTypeRefused = "declares a document type, which no Visio part has; it is refused";

std::string_view view(const xmlChar* text) {
    return text == nullptr ? std::string_view{} : std::string_view(reinterpret_cast<const char*>(text));
}

} // namespace

void XmlPart::Free::operator()(_xmlTextReader* reader) const noexcept {
    xmlFreeTextReader(reader);
}

XmlPart::XmlPart(ZipArchive& archive, std::string part, std::span<const std::string_view> namespaces,
                 std::string_view root)
    : archive_(archive), part_(std::move(part)), namespaces_(namespaces), stream_(archive.open(part_)) {
    static std::once_flag once;
    std::call_once(once, xmlInitParser);

    reader_.reset(xmlReaderForIO(readBytes, nullptr, this, nullptr, nullptr, XML_PARSE_NONET | XML_PARSE_COMPACT));
    if (!reader_) {
        if (!stream_.problem().empty()) archive_.fail(part_, stream_.problem());
        throw std::bad_alloc();
    }
    xmlTextReaderSetStructuredErrorHandler(
        reader_.get(), [](void* self, xmlErrorPtr error) { onError(self, error); }, this);

    while (step()) {
        if (xmlTextReaderNodeType(reader_.get()) != XML_READER_TYPE_ELEMENT) continue;
        if (name() != root || !ours())
            fail("has the root element " + printable(name()) + ", not Visio's " + std::string(root));
        return;
    }
    fail("has no root element");
}

XmlPart::~XmlPart() = default;

int XmlPart::readBytes(void* context, char* buffer, int size) {
    auto& self = *static_cast<XmlPart*>(context);
    const int count = self.stream_.read(buffer, size);
    if (count <= 0 || self.prologEnded_) return count;
    return self.acceptProlog({buffer, static_cast<std::size_t>(count)}) ? count : -1;
}

// Looks at what stands before the root element, and stops the parser ahead of a document type declaration: once the
// parser has seen one, it has already begun with the entities in it. Encodings of two and four bytes are looked at
// without their zeros; in any that hide the declaration altogether the parser's own node for it is refused (see step).
bool XmlPart::acceptProlog(std::string_view bytes) noexcept {
    constexpr std::string_view declaration = "<!DOCTYPE";
    for (const char c : bytes) {
        if (c == '\0') continue;
        if (matched_ == 1 && c != '!' && c != '?') { // the root element begins
            prologEnded_ = true;
            return true;
        }
        matched_ = c == declaration[matched_] ? matched_ + 1 : c == '<' ? 1u : 0u;
        if (matched_ == declaration.size()) {
            hasDocumentType_ = true;
            return false;
        }
    }
    return true;
}

void XmlPart::onError(void* context, xmlErrorPtr error) {
    auto& self = *static_cast<XmlPart*>(context);
    // Warnings and namespace trouble of unknown elements are no reason to refuse a drawing.
    if (error->level < XML_ERR_ERROR || !self.xmlProblem_.empty() || error->message == nullptr) return;
    if (error->level == XML_ERR_ERROR && error->domain == XML_FROM_NAMESPACE) return;
    self.xmlProblem_ = error->message;
    while (!self.xmlProblem_.empty() && (self.xmlProblem_.back() == '\n' || self.xmlProblem_.back() == '.'))
        self.xmlProblem_.pop_back();
}

bool XmlPart::step() {
    const int result = xmlTextReaderRead(reader_.get());
    if (result < 0) {
        if (const std::string problem = stream_.problem(); !problem.empty()) archive_.fail(part_, problem);
        if (hasDocumentType_) fail(documentTypeRefused);
        fail("is not well-formed XML" + (xmlProblem_.empty() ? "" : " (" + printable(xmlProblem_) + ")"));
    }
    if (result == 0) return false;
    switch (xmlTextReaderNodeType(reader_.get())) {
    case XML_READER_TYPE_DOCUMENT_TYPE:
        fail(documentTypeRefused);
    case XML_READER_TYPE_ENTITY_REFERENCE:
        fail("refers to an entity, which no Visio part does; it is refused");
    default:
        return true;
    }
}

bool XmlPart::ours() const {
    const std::string_view space = view(xmlTextReaderConstNamespaceUri(reader_.get()));
    for (const std::string_view known : namespaces_)
        if (space == known) return true;
    return false;
}

XmlPart::Scope XmlPart::children() {
    return {depth(), xmlTextReaderIsEmptyElement(reader_.get()) == 1};
}

bool XmlPart::next(const Scope& scope) {
    while (nextNode(scope))
        if (!isText_ && depth() == scope.depth + 1) return true;
    return false;
}

bool XmlPart::nextNode(const Scope& scope) {
    isText_ = false;
    // An element written as <a/> has no end of its own to stop at: the step behind it would leave its parent's scope.
    if (scope.empty) return false;
    while (step()) {
        switch (xmlTextReaderNodeType(reader_.get())) {
        case XML_READER_TYPE_END_ELEMENT:
            if (depth() == scope.depth) return false;
            break;
        case XML_READER_TYPE_ELEMENT:
            if (ours()) return true;
            break;
        case XML_READER_TYPE_TEXT:
        case XML_READER_TYPE_CDATA:
        case XML_READER_TYPE_WHITESPACE:
        case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
            isText_ = true;
            return true;
        default:
            break;
        }
    }
    return false;
}

std::string_view XmlPart::text() const {
    return view(xmlTextReaderConstValue(reader_.get()));
}

int XmlPart::depth() const {
    return xmlTextReaderDepth(reader_.get());
}

std::string_view XmlPart::name() const {
    return view(xmlTextReaderConstLocalName(reader_.get()));
}

bool XmlPart::nextAttribute() {
    while (xmlTextReaderMoveToNextAttribute(reader_.get()) == 1) {
        if (xmlTextReaderConstNamespaceUri(reader_.get()) == nullptr) return true;
    }
    xmlTextReaderMoveToElement(reader_.get());
    return false;
}

std::string_view XmlPart::attributeName() const {
    return name();
}

std::string_view XmlPart::attributeValue() const {
    return text();
}

std::string XmlPart::attribute(std::string_view name, std::string_view space) {
    std::string value;
    while (xmlTextReaderMoveToNextAttribute(reader_.get()) == 1) {
        if (attributeName() == name && view(xmlTextReaderConstNamespaceUri(reader_.get())) == space)
            value = attributeValue();
    }
    xmlTextReaderMoveToElement(reader_.get());
    return value;
}

std::uint32_t XmlPart::number(std::string_view attributeName, std::string_view value) const {
    std::uint32_t result = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), result);
    if (error != std::errc{} || end != value.data() + value.size())
        fail(std::string("gives the attribute ").append(attributeName) + " as \"" + printable(value) +
             "\", not as a number");
    return result;
}

void XmlPart::finish() {
    while (step()) {
    }
    if (!stream_.drain()) archive_.fail(part_, stream_.problem());
}

void XmlPart::fail(std::string_view problem) const {
    const int line = reader_ ? xmlTextReaderGetParserLineNumber(reader_.get()) : 0;
    archive_.fail(part_, line > 0 ? std::string(problem) + " (line " + std::to_string(line) + ")" : problem);
}

} // namespace tarncom32::standin::drawing
