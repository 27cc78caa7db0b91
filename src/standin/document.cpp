#include "standin/document.h"

#include "standin/file_name.h"
#include "standin/master.h"
#include "standin/masters.h"
#include "standin/page.h"
#include "standin/pages.h"
#include "standin/shape.h"
#include "standin/visio_error.h"

namespace tarncom32::standin {

const automation::ClassInfo& Document::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"An open document.", Guid{}, "650937a2-ef10-46c0-9e2e-da44aa4e0e2d"_guid,
        {
            member::get<&Document::application>(1, u"Application", {}, u"The application."),
            member::method<&Document::close>(2, u"Close", {}, u"Closes the document without saving it."),
            member::get<&Document::document>(3, u"Document", {}, u"The document itself."),
            member::get<&Document::documentSheet>(4, u"DocumentSheet", {}, u"The sheet of the document."),
            member::get<&Document::fullName>(5, u"FullName", {}, u"Folder and name of the document's file."),
            member::get<&Document::id>(6, u"ID", {}, u"The ID of the document in its application."),
            member::get<&Document::index>(7, u"Index", {}, u"The position among the open documents, from 1."),
            member::get<&Document::masters>(8, u"Masters", {}, u"The masters of the document's own stencil."),
            member::get<&Document::name>(0, u"Name", {}, u"The name of the document."),
            member::get<&Document::objectType>(9, u"ObjectType", {}, u"The type of the object: 10."),
            member::get<&Document::pages>(10, u"Pages", {}, u"The pages."),
            member::get<&Document::path>(11, u"Path", {}, u"The folder of the document's file."),
            member::get<&Document::saved>(12, u"Saved", {}, u"Whether the document is unchanged."),
            member::let<&Document::setSaved>(12, u"Saved", {in(u"lpfSaved")}, u"Whether the document is unchanged."),
            member::get<&Document::templateName>(13, u"Template", {}, u"The template that the document came from."),
            member::get<&Document::type>(14, u"Type", {}, u"1 drawing, 2 stencil, 3 template."),
        });
    return info;
}

Document::Document(Application& application, std::unique_ptr<DocumentModel> model, std::filesystem::path file)
    : application_(&application), model_(std::move(model)), file_(std::move(file)), name_(fileNameOf(file_.filename())),
      kind_(model_->kind()) {}

Document::Document(Application& application, std::unique_ptr<DocumentModel> model, drawing::DocumentKind kind,
                   String name, String templateName)
    : application_(&application), model_(std::move(model)), name_(std::move(name)), template_(std::move(templateName)),
      kind_(kind) {}

Ref<Application> Document::application() {
    requireOpen();
    return Ref<Application>(application_);
}

void Document::close() {
    requireOpen();
    const Ref<Document> self(this); // the application may hold the last reference
    std::exchange(application_, nullptr)->forget(*this);
}

Ref<Shape> Document::documentSheet() {
    return objectOf(model().documentSheet());
}

String Document::fullName() {
    requireOpen();
    return file_.empty() ? name_ : fileNameOf(file_);
}

std::int16_t Document::index() {
    requireOpen();
    std::int16_t position = 1;
    for (const Ref<Document>& document : application_->openDocuments()) {
        if (document.get() == this) break;
        ++position;
    }
    return position;
}

Ref<Masters> Document::masters() {
    requireOpen();
    return automation::make<Masters>(Ref<Document>(this));
}

String Document::name() {
    requireOpen();
    return name_;
}

Ref<Pages> Document::pages() {
    requireOpen();
    return automation::make<Pages>(Ref<Document>(this));
}

String Document::path() {
    requireOpen();
    if (file_.empty()) return {};
    return fileNameOf(file_.parent_path() / "");
}

Boolean Document::saved() {
    return !model().changed;
}

void Document::setSaved(Boolean lpfSaved) {
    model().changed = !lpfSaved.isNonZero();
}

String Document::templateName() {
    requireOpen();
    return template_;
}

std::int16_t Document::type() {
    requireOpen();
    return static_cast<std::int16_t>(static_cast<int>(kind_) + 1);
}

Ref<Shape> Document::objectOf(ShapeNode& node) {
    if (node.object) return Ref<Shape>(node.object);
    return automation::make<Shape>(Ref<Document>(this), node);
}

Ref<Page> Document::pageObject(Container& page) {
    if (page.object) return Ref<Page>(static_cast<Page*>(page.object));
    return automation::make<Page>(Ref<Document>(this), page);
}

Ref<Master> Document::masterObject(Container& master) {
    if (master.object) return Ref<Master>(static_cast<Master*>(master.object));
    return automation::make<Master>(Ref<Document>(this), master);
}

ObjectRef Document::ownerObject(Container& container) {
    switch (container.kind) {
    case Container::Kind::Page:
        return pageObject(container);
    case Container::Kind::Master:
        return masterObject(container);
    case Container::Kind::Document:
        break;
    }
    return Ref<Document>(this);
}

void Document::throwClosed() const {
    throw visio_error::inappropriateSource(u"its document has been closed");
}

} // namespace tarncom32::standin
