#include "standin/application.h"

#include "automation/take_out.h"
#include "standin/document.h"
#include "standin/documents.h"
#include "standin/drawing/drawing_reader.h"
#include "standin/file_name.h"
#include "standin/visio_error.h"

#include <algorithm>

namespace tarncom32::standin {

namespace fs = std::filesystem;
using automation::equalsIgnoreCase;

namespace {

std::unique_ptr<DocumentModel> readModel(const fs::path& path, const drawing::Limits& limits) {
    try {
        return std::make_unique<DocumentModel>(drawing::readDrawing(path, limits), limits);
    } catch (const drawing::DrawingError& error) {
        throw visio_error::cannotOpen(automation::fromUtf8(error.what()));
    }
}

} // namespace

const automation::ClassInfo& Application::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"The running Visio stand-in.", "29ed9619-1cba-409c-902d-9cb9eb8d3756"_guid,
        "4fd6741d-d460-4667-bc22-522cfc9f226c"_guid,
        {
            member::get<&Application::activeDocument>(1, u"ActiveDocument", {}, u"The active document, or Nothing."),
            member::get<&Application::application>(2, u"Application", {}, u"The application itself."),
            member::get<&Application::documents>(3, u"Documents", {}, u"The open documents."),
            member::get<&Application::name>(0, u"Name", {}, u"The name of the application."),
            member::get<&Application::objectType>(4, u"ObjectType", {}, u"The type of the object: 3."),
            member::method<&Application::quit>(5, u"Quit", {}, u"Closes all documents and ends the application."),
            member::get<&Application::version>(6, u"Version", {}, u"The version, such as \"16.0\"."),
        });
    return info;
}

Application::Application(ApplicationOptions options) : options_(std::move(options)) {}

Application::~Application() {
    closeAll();
}

Ref<Document> Application::activeDocument() {
    requireRunning();
    return documents_.empty() ? Ref<Document>() : documents_.back();
}

Ref<Documents> Application::documents() {
    requireRunning();
    return automation::make<Documents>(Ref<Application>(this));
}

void Application::quit() {
    if (hasQuit_) return;
    const Ref<Application> self(this); // the list of running applications may hold the last reference
    hasQuit_ = true;
    closeAll();
    if (onQuit) std::exchange(onQuit, nullptr)();
}

Ref<Document> Application::open(StringView fileName) {
    requireRunning();
    const fs::path path = locate(fileName);
    for (const Ref<Document>& document : documents_)
        if (document->file() == path) return document;
    return keep(automation::make<Document>(*this, readModel(path, options_.limits), path));
}

Ref<Document> Application::add(StringView fileName) {
    requireRunning();
    auto kind = drawing::DocumentKind::Drawing;
    String templateName;
    std::unique_ptr<DocumentModel> model;
    if (equalsIgnoreCase(fileName, u"vss")) {
        kind = drawing::DocumentKind::Stencil;
        model = std::make_unique<DocumentModel>();
    } else if (fileName.empty() || equalsIgnoreCase(fileName, u"vsd") || equalsIgnoreCase(fileName, u"vst")) {
        if (equalsIgnoreCase(fileName, u"vst")) kind = drawing::DocumentKind::Template;
        model = std::make_unique<DocumentModel>();
        model->addPage(u"Page-1");
        model->changed = false;
    } else {
        const fs::path path = locate(fileName);
        model = readModel(path, options_.limits);
        if (model->kind() == drawing::DocumentKind::Stencil) kind = drawing::DocumentKind::Stencil;
        templateName = fileNameOf(path);
    }
    const String name = kind == drawing::DocumentKind::Stencil ? u"Stencil" + automation::decimalText(++stencilsAdded_)
                                                               : u"Drawing" + automation::decimalText(++drawingsAdded_);
    return keep(automation::make<Document>(*this, std::move(model), kind, name, templateName));
}

void Application::forget(Document& document) {
    const auto found = std::ranges::find(documents_, &document, &Ref<Document>::get);
    if (found == documents_.end()) return;
    const Ref<Document> gone = automation::takeOut(documents_, found);
}

Ref<Document> Application::keep(Ref<Document> document) {
    document->setId(++lastDocumentId_);
    documents_.push_back(document);
    return document;
}

fs::path Application::locate(StringView fileName) const {
    if (fileName.empty()) throw visio_error::invalidParameter(u"no file was named");
    std::error_code failure;
    const fs::path path = fs::absolute(options_.locate ? options_.locate(fileName) : pathOf(fileName), failure);
    if (failure) throw visio_error::cannotOpen(String(fileName) + u": the current folder is not there any more");
    return path.lexically_normal();
}

void Application::requireRunning() const {
    if (hasQuit_) throw visio_error::inappropriateSource(u"the application has quit");
}

void Application::closeAll() {
    for (const Ref<Document>& document : std::exchange(documents_, {}))
        document->end();
}

Ref<Application> startApplication(ApplicationOptions options) {
    return automation::make<Application>(std::move(options));
}

} // namespace tarncom32::standin
