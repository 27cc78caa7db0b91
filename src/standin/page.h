#pragma once

#include "automation/members.h"
#include "standin/document.h"

namespace tarncom32::standin {

/// A page.
class Page final : public automation::Described<Page> {
public:
    static constexpr StringView kClassName = u"Page";
    static const automation::ClassInfo& describe();

    /// Made by `Document::pageObject`.
    Page(Ref<Document> document, Container& page) : document_(std::move(document)), page_(page) { page_.object = this; }

    Ref<Application> application() { return document_->application(); }
    /// -1 for a background page, else 0.
    std::int16_t background();
    /// Takes the page and its shapes out of the document. `fRenumberPages`: nonzero gives the remaining pages that
    /// nobody renamed the names "Page-1", "Page-2" ... in order.
    void deletePage(std::int16_t fRenumberPages);
    Ref<Document> document() { return document_; }
    /// Draws a rectangle between two corners given in inches.
    Ref<Shape> drawRectangle(double xBegin, double yBegin, double xEnd, double yEnd);
    /// Drops a master of the page's document; the pin of the new instance comes to stand at the place, in inches.
    Ref<Shape> drop(const ObjectRef& ObjectToDrop, double xPos, double yPos);
    std::int32_t id();
    /// The position among the pages, from 1.
    std::int16_t index();
    /// The local name. The first new name becomes the universal one too. Raises when another page has it.
    String name();
    void setName(StringView lpLocaleSpecificName);
    /// The universal name.
    String nameU();
    void setNameU(StringView lpLocaleIndependentName);
    /// 14.
    std::int16_t objectType() { return 14; }
    /// The sheet of the page: a shape of type 1 named "ThePage".
    Ref<Shape> pageSheet();
    /// The shapes at the top level.
    Ref<Shapes> shapes();
    /// 1 foreground, 2 background.
    std::int16_t type();

private:
    ~Page() override { page_.object = nullptr; }
    /// The page's contents. Raises once the page was deleted or the document was closed.
    Container& live() const;

    Ref<Document> document_;
    Container& page_;
};

} // namespace tarncom32::standin
