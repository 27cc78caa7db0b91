#pragma once

#include "standin/model/document_model.h"

namespace tarncom32::standin {

/// Thrown while a document is built from a file whose instances inherit more than a document takes.
struct InheritsTooMuch {
    const char* what;
};

/// Fills a new document from a file: nodes for all shapes, tied to what they inherit from, and the sub-shapes that an
/// instance inherits without the file spelling them out.
class DocumentLoader {
public:
    DocumentLoader(DocumentModel& model, const drawing::DrawingFile& file) : model_(model), file_(file) {}

    /// Raises a DrawingError for instances that inherit too many shapes, or groups nested too deeply.
    void load();

private:
    void fill(Container& container, const drawing::Contents& contents, const std::string& part);
    void addShapes(Container& container, ShapeNode* parent, std::span<const drawing::Shape> shapes,
                   Container* enclosing);
    void tie(ShapeNode& node, const drawing::Shape& shape, Container* enclosing);
    void addInherited(ShapeNode& node, std::span<const drawing::Shape> written);
    Container* masterOf(std::uint32_t id);
    void ensureFilled(std::size_t master);

    DocumentModel& model_;
    const drawing::DrawingFile& file_;
    std::unordered_map<std::uint32_t, std::size_t> masterPlaces_;
    std::vector<bool> filled_;
};

} // namespace tarncom32::standin
