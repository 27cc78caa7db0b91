#pragma once

#include "standin/drawing/sheet.h"

#include <memory>
#include <string>
#include <vector>

namespace tarncom32::standin::drawing {

/// What a shape is by its Type attribute.
enum class ShapeType : std::uint8_t {
    Unspecified, ///< not given, or a word that is not known: as the master's shape, else an ordinary shape
    Shape,
    Group,
    Foreign, ///< a picture or an embedded object
    Guide,
};

/// A field in a shape's text.
struct TextField {
    std::uint32_t offset; ///< UTF-16 units before it
    std::uint32_t length; ///< UTF-16 units of its last result, which is part of the text
    std::uint32_t index;  ///< the IX of its row in the section "Field"
};

/// A shape with its sub-shapes, as the file has it.
struct Shape {
    std::uint32_t id = noId;          ///< unique in its page or master
    std::uint32_t master = noId;      ///< the id of the master that it is an instance of; it may name no master at all
    std::uint32_t masterShape = noId; ///< the id of the shape, in the master of the group around it, that it stands for
    ShapeType type = ShapeType::Unspecified;
    bool deleted = false;              ///< Del: the sub-shape is inherited and was deleted here
    Text text;                         ///< its text with the results of fields; absent when it has none of its own
    std::span<const TextField> fields; ///< the fields in `text`, in order
    std::span<const Shape> shapes;     ///< sub-shapes in file order, back to front
    Sheet sheet;                       ///< names, unique id, cells and sections
};

/// The shapes of a page or a master.
struct Contents {
    /// One shape of the index below.
    struct Entry {
        std::uint32_t id;
        const Shape* shape;
    };

    std::span<const Shape> shapes; ///< top-level shapes in file order, back to front
    std::span<const Entry> byId;   ///< every shape at every depth but the deleted ones, by ascending id
};

/// A page.
struct Page {
    std::uint32_t id = noId;
    std::uint32_t backPage = noId; ///< the id of the page behind it; it may name no page at all
    bool background = false;
    std::string part;         ///< the part that holds its shapes, for messages
    Text name;                ///< local name, never absent
    Text nameU;               ///< universal name, never absent
    bool customName = false;  ///< the local name was given by somebody, it is not Visio's default
    bool customNameU = false; ///< likewise the universal name
    Sheet sheet;              ///< the page sheet
    Contents contents;
};

/// A master of the document's own stencil.
struct Master {
    std::uint32_t id = noId;
    bool hidden = false;
    std::string part; ///< the part that holds its shapes, for messages
    Text name;        ///< local name, never absent
    Text nameU;       ///< universal name, never absent
    Text uniqueId;
    Text baseId; ///< the same in all copies of a master
    Text prompt;
    Sheet sheet; ///< the master's page sheet
    Contents contents;
};

/// A style, from which sheets take cells that neither they nor their masters have.
struct StyleSheet {
    std::uint32_t id = noId;
    Sheet sheet; ///< its own line, fill and text style are the styles it is based on
};

/// An entry of the document's persistent event list.
struct EventItem {
    std::uint32_t id = noId;
    std::int32_t eventCode = 0; ///< 1 document created, 2 opened ...
    std::int32_t action = 0;    ///< 1 runs an add-on
    bool enabled = false;
    Text target;     ///< the add-on's name
    Text targetArgs; ///< what it is given
};

/// What a file is by the content type of its main part.
enum class DocumentKind : std::uint8_t { Drawing, Stencil, Template };

/// A drawing as it lies in its file: nothing inherited, nothing computed, everything in file order. It does not change
/// once it is read; views and pointers into it hold as long as it lives, wherever it is moved.
struct DrawingFile {
    DocumentKind kind = DocumentKind::Drawing;
    bool macroEnabled = false;      ///< .vsdm, .vssm or .vstm
    Sheet sheet;                    ///< the document sheet
    std::vector<StyleSheet> styles; ///< in file order
    std::vector<EventItem> events;  ///< in file order
    std::vector<Page> pages;        ///< in Visio's order: foreground pages in file order, then background pages
    std::vector<Master> masters;    ///< in file order
    std::size_t shapeCount = 0;     ///< shapes at every depth in all pages and masters
    std::unique_ptr<Arena> memory;  ///< holds the strings, shapes, rows and cells
};

} // namespace tarncom32::standin::drawing
