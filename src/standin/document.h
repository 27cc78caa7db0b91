#pragma once

#include "automation/members.h"
#include "standin/application.h"
#include "standin/model/document_model.h"

namespace tarncom32::standin {

/// An open document. Its pages, masters and shapes refer to it and keep its contents in memory; once it is closed, all
/// of them raise "Inappropriate source object".
class Document final : public automation::Described<Document> {
public:
    static constexpr StringView kClassName = u"Document";
    static const automation::ClassInfo& describe();

    /// A document that a file was opened as.
    Document(Application& application, std::unique_ptr<DocumentModel> model, std::filesystem::path file);
    /// A document that is in no file yet.
    Document(Application& application, std::unique_ptr<DocumentModel> model, drawing::DocumentKind kind, String name,
             String templateName);

    Ref<Application> application();
    /// Closes the document without saving and without asking.
    void close();
    Ref<Document> document() { return Ref<Document>(this); }
    /// The sheet of the document: a shape of type 6 named "TheDoc".
    Ref<Shape> documentSheet();
    /// Folder and name of the file; the name alone while the document is in no file.
    String fullName();
    std::int32_t id() { return id_; }
    /// The position among the open documents, from 1.
    std::int16_t index();
    Ref<Masters> masters();
    /// The name of the file, or "Drawing1", "Stencil1" ... while the document is in none.
    String name();
    /// 10.
    std::int16_t objectType() { return 10; }
    Ref<Pages> pages();
    /// The folder of the file with its final separator; "" while the document is in no file.
    String path();
    /// False once the document has been changed; setting it only sets the mark.
    Boolean saved();
    void setSaved(Boolean lpfSaved);
    /// The full name of the file that the document was created after; "" for none.
    String templateName();
    /// 1 drawing, 2 stencil, 3 template.
    std::int16_t type();

    /// The file; empty for none.
    const std::filesystem::path& file() const { return file_; }
    void setId(std::int32_t id) { id_ = id; }
    /// Takes the document from its application.
    void end() { application_ = nullptr; }

    /// What the document consists of. Raises when it has been closed.
    DocumentModel& model() {
        requireOpen();
        return *model_;
    }
    void requireOpen() const {
        if (!application_) throwClosed();
    }

    /// The object of a shape, page or master: the same one for as long as somebody holds it.
    Ref<Shape> objectOf(ShapeNode& node);
    Ref<Page> pageObject(Container& page);
    Ref<Master> masterObject(Container& master);
    /// The Page or Master that holds shapes; the document itself for its own sheet.
    ObjectRef ownerObject(Container& container);

private:
    [[noreturn]] void throwClosed() const;

    Application* application_; // null once closed; not owned
    std::unique_ptr<DocumentModel> model_;
    std::filesystem::path file_;
    String name_;
    String template_;
    drawing::DocumentKind kind_;
    std::int32_t id_ = 0;
};

} // namespace tarncom32::standin
