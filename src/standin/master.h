#pragma once

#include "automation/members.h"
#include "standin/document.h"

namespace tarncom32::standin {

/// A master in a document's own stencil.
class Master final : public automation::Described<Master> {
public:
    static constexpr StringView kClassName = u"Master";
    static const automation::ClassInfo& describe();

    /// Made by `Document::masterObject`.
    Master(Ref<Document> document, Container& master) : document_(std::move(document)), master_(master) {
        master_.object = this;
    }

    Ref<Application> application() { return document_->application(); }
    Ref<Document> document() { return document_; }
    /// Draws a rectangle between two corners given in inches. The first shape of a master is what instances are made
    /// after.
    Ref<Shape> drawRectangle(double xBegin, double yBegin, double xEnd, double yEnd);
    /// Drops another master of the same document into this one.
    Ref<Shape> drop(const ObjectRef& ObjectToDrop, double xPos, double yPos);
    std::int32_t id();
    /// The position among the masters, from 1.
    std::int16_t index();
    /// The local name. The first new name becomes the universal one too. Raises when another master has it.
    String name();
    void setName(StringView lpLocaleSpecificName);
    /// The universal name.
    String nameU();
    void setNameU(StringView lpLocaleIndependentName);
    /// 12.
    std::int16_t objectType() { return 12; }
    /// The sheet of the master's page.
    Ref<Shape> pageSheet();
    /// The shapes at the top level.
    Ref<Shapes> shapes();
    /// The GUID that the file gives the master; "" for a master that was added.
    String uniqueId();

    /// The master's contents. Raises once the document was closed.
    Container& container() const {
        document_->requireOpen();
        return master_;
    }

    /// The master that `object` is, for dropping it in `document`. Raises "Inappropriate target object" for what is no
    /// master of that document.
    static Container& toDrop(const ObjectRef& object, const Document& document);

private:
    ~Master() override { master_.object = nullptr; }

    Ref<Document> document_;
    Container& master_;
};

} // namespace tarncom32::standin
