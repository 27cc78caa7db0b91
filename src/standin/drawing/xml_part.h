#pragma once

#include "standin/drawing/zip_archive.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

// libxml2's own names
struct _xmlTextReader; // NOLINT(bugprone-reserved-identifier)
struct _xmlError;      // NOLINT(bugprone-reserved-identifier)

namespace tarncom32::standin::drawing {

/// The namespaces of Visio's own parts. The second is the one that the published schema prints.
inline constexpr std::string_view visioNamespaces[] = {"http://schemas.microsoft.com/office/visio/2012/main",
                                                       "http://schemas.microsoft.com/office/visio/2011/1/core"};

/// One XML part of a package, read forwards as a stream. Elements outside the part's namespaces, and elements that the
/// reader does not ask for, are passed over with all they contain. Document type declarations, and with them entities,
/// are refused; nothing is ever fetched from elsewhere. Every failure is a DrawingError that names the part and the
/// line.
///
///     XmlPart xml(archive, "visio/pages/pages.xml", visioNamespaces, "Pages");
///     for (auto pages = xml.children(); xml.next(pages);)
///         if (xml.name() == "Page") readPage(xml);
///     xml.finish();
class XmlPart {
public:
    /// A place in the tree whose child elements are walked.
    struct Scope {
        int depth;  ///< of the element whose children they are
        bool empty; ///< written as <a/>
    };

    /// Opens the part and reads up to its root element, which must have that name and one of those namespaces.
    XmlPart(ZipArchive& archive, std::string part, std::span<const std::string_view> namespaces, std::string_view root);
    ~XmlPart();
    XmlPart(const XmlPart&) = delete;
    XmlPart& operator=(const XmlPart&) = delete;

    /// The children of the current element.
    [[nodiscard]] Scope children();

    /// Moves to the next child element, past whatever of the previous one was left unread. False, once, behind the
    /// last.
    [[nodiscard]] bool next(const Scope& scope);

    /// Like `next`, but stops at pieces of character data too, at any depth below the scope's element: `isText` tells
    /// them from elements, `text` gives them.
    [[nodiscard]] bool nextNode(const Scope& scope);

    /// Whether the current node is character data.
    [[nodiscard]] bool isText() const noexcept { return isText_; }

    /// The current piece of character data.
    [[nodiscard]] std::string_view text() const;

    /// The depth of the current node; the root element has depth 0.
    [[nodiscard]] int depth() const;

    /// The current element's name without prefix.
    [[nodiscard]] std::string_view name() const;

    /// Calls `visit(name, value)` for each attribute of the current element that has no namespace. The views hold until
    /// `visit` returns.
    template <typename Visit>
    void attributes(Visit visit) {
        while (nextAttribute())
            visit(attributeName(), attributeValue());
    }

    /// The value of the current element's attribute of that name and namespace ("" for none); "" when it has none.
    [[nodiscard]] std::string attribute(std::string_view name, std::string_view space = "");

    /// An attribute's value as a number from 0 to 4294967295; any other value is refused.
    [[nodiscard]] std::uint32_t number(std::string_view attributeName, std::string_view value) const;

    /// Reads what is left of the part, so that damage behind the last element asked for is noticed.
    void finish();

    /// Raises a DrawingError about this part, with the line.
    [[noreturn]] void fail(std::string_view problem) const;

    /// The part's name.
    [[nodiscard]] const std::string& part() const noexcept { return part_; }

    /// The archive that the part is read from.
    [[nodiscard]] ZipArchive& archive() noexcept { return archive_; }

private:
    struct Free {
        void operator()(_xmlTextReader* reader) const noexcept;
    };

    static int readBytes(void* context, char* buffer, int size);
    bool acceptProlog(std::string_view bytes) noexcept;
    static void onError(void* context, _xmlError* error);
    bool step(); // to the next node of any kind; false at the end
    [[nodiscard]] bool ours() const;
    bool nextAttribute();
    [[nodiscard]] std::string_view attributeName() const;
    [[nodiscard]] std::string_view attributeValue() const;

    ZipArchive& archive_;
    std::string part_;
    std::span<const std::string_view> namespaces_;
    PartStream stream_;
    std::string xmlProblem_; // the parser's own words about the first thing wrong
    std::unique_ptr<_xmlTextReader, Free> reader_;
    bool isText_ = false;
    bool prologEnded_ = false;     // the root element has begun
    bool hasDocumentType_ = false; // the bytes declare one; the parser did not get to see it
    std::size_t matched_ = 0;      // bytes of the declaration's beginning that came last
};

} // namespace tarncom32::standin::drawing
