#pragma once

#include "standin/forward.h"

#include <cstdint>
#include <unordered_map>

namespace tarncom32::standin {

struct Container;
struct ShapeNode;

/// Which of a shape's two names is meant.
enum class NameKind : std::uint8_t { Local, Universal };

/// Finds the shapes of a page or master by name, at every depth, without regard to the case of Latin letters. A name is
/// unique only among the shapes beside each other: drawings that Visio wrote have the same name in several groups. Only
/// names that were given are indexed, on the first look-up; default names are read as what they are, text and id.
class NameIndex {
public:
    explicit NameIndex(Container& container) : container_(container) {}

    /// The shape of that name in `group` (null: at the top level), else anywhere; of several there the first, in the
    /// file's order. "Sheet." and an id finds the shape of the id whatever its name, because add-on command lines name
    /// shapes so. Null when there is none.
    ShapeNode* find(StringView name, NameKind kind, const ShapeNode* group);
    /// The shape of that name in `group` itself; null when there is none.
    ShapeNode* findBeside(StringView name, NameKind kind, const ShapeNode* group);

    /// Tell of a name that a shape got or is about to lose.
    void added(ShapeNode& node);
    void removing(ShapeNode& node);

private:
    /// Keys are views of the shapes' own names, which the document keeps.
    struct Beside {
        const ShapeNode* group;
        StringView name;
    };
    struct Folded {
        std::size_t operator()(StringView name) const { return automation::MemberName(name).hash(); }
        bool operator()(StringView left, StringView right) const { return automation::equalsIgnoreCase(left, right); }
        std::size_t operator()(const Beside& key) const {
            return (*this)(key.name) ^ (std::hash<const ShapeNode*>()(key.group) * 31);
        }
        bool operator()(const Beside& left, const Beside& right) const {
            return left.group == right.group && (*this)(left.name, right.name);
        }
    };
    /// The shapes of one name: drawings from elsewhere may have several, even beside each other.
    struct Bearers {
        ShapeNode* first;
        std::size_t count;
    };
    struct Names {
        std::unordered_map<Beside, Bearers, Folded, Folded> beside;
        std::unordered_map<StringView, Bearers, Folded, Folded> anywhere;
    };

    Names& namesOf(NameKind kind) { return names_[static_cast<int>(kind)]; }
    void build();
    void insert(ShapeNode& node);
    ShapeNode* findDefault(StringView name, NameKind kind);

    Container& container_;
    Names names_[2];
    bool built_ = false;
};

/// The name of a shape: the one it was given, else its other one, else its master's (or "Sheet"), a point and its id.
/// "ThePage" and "TheDoc" for sheets.
String nameOf(const ShapeNode& node, NameKind kind);
/// "Sheet." and the id.
String nameIdOf(const ShapeNode& node);

} // namespace tarncom32::standin
