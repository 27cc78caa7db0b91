#include "standin/model/name_index.h"

#include "standin/drawing/names.h"
#include "standin/model/container.h"

#include <optional>

namespace tarncom32::standin {

using automation::equalsIgnoreCase;

namespace {

/// The number behind the last point of a default name.
std::optional<std::uint32_t> idInName(StringView name) {
    const std::size_t point = name.rfind(u'.');
    if (point == StringView::npos) return std::nullopt;
    const StringView digits = name.substr(point + 1);
    if (digits.empty() || digits.size() > 9 || digits.front() == u'0') return std::nullopt;
    std::uint32_t id = 0;
    for (const char16_t c : digits) {
        if (c < u'0' || c > u'9') return std::nullopt;
        id = id * 10 + static_cast<std::uint32_t>(c - u'0');
    }
    return id;
}

StringView givenName(const ShapeNode& node, NameKind kind) {
    const drawing::Text own = kind == NameKind::Local ? node.name : node.nameU;
    return own.empty() ? (kind == NameKind::Local ? node.nameU : node.name).view() : own.view();
}

} // namespace

String nameIdOf(const ShapeNode& node) {
    return drawing::nameId(node.id);
}

String nameOf(const ShapeNode& node, NameKind kind) {
    if (node.kind == ShapeKind::Page) return u"ThePage";
    if (node.kind == ShapeKind::Document) return u"TheDoc";
    if (const StringView given = givenName(node, kind); !given.empty()) return String(given);
    if (!node.master) return nameIdOf(node);
    return drawing::defaultName(node.id, kind == NameKind::Local ? node.master->name : node.master->nameU);
}

ShapeNode* NameIndex::find(StringView name, NameKind kind, const ShapeNode* group) {
    if (ShapeNode* node = findBeside(name, kind, group)) return node;
    const auto found = namesOf(kind).anywhere.find(name);
    if (found != namesOf(kind).anywhere.end()) return found->second.first;
    if (equalsIgnoreCase(name, u"ThePage") && container_.kind != Container::Kind::Document) return container_.sheet;
    return findDefault(name, kind);
}

ShapeNode* NameIndex::findBeside(StringView name, NameKind kind, const ShapeNode* group) {
    build();
    const auto found = namesOf(kind).beside.find({group, name});
    if (found != namesOf(kind).beside.end()) return found->second.first;
    ShapeNode* node = findDefault(name, kind);
    return node && node->parent == group ? node : nullptr;
}

ShapeNode* NameIndex::findDefault(StringView name, NameKind kind) {
    const auto id = idInName(name);
    const auto found = id ? container_.byId.find(*id) : container_.byId.end();
    if (found == container_.byId.end()) return nullptr;
    ShapeNode& node = *found->second;
    return equalsIgnoreCase(name, nameIdOf(node)) || equalsIgnoreCase(name, nameOf(node, kind)) ? &node : nullptr;
}

void NameIndex::added(ShapeNode& node) {
    if (built_) insert(node);
}

void NameIndex::removing(ShapeNode& node) {
    if (!built_) return;
    const auto remove = [&](auto& names, const auto& name) {
        const auto found = names.find(name);
        if (found == names.end()) return;
        // What comes first among the others is worked out by the next look-up.
        if (found->second.count > 1 && found->second.first == &node) built_ = false;
        if (--found->second.count == 0) names.erase(found);
    };
    for (const NameKind kind : {NameKind::Local, NameKind::Universal}) {
        const StringView name = givenName(node, kind);
        remove(namesOf(kind).beside, Beside{node.parent, name});
        remove(namesOf(kind).anywhere, name);
    }
}

void NameIndex::build() {
    if (built_) return;
    for (Names& names : names_)
        names = {};
    built_ = true;
    // Drawing order, without recursion: what is to come stands on the stack in reverse.
    std::vector<ShapeNode*> pending(container_.shapes.rbegin(), container_.shapes.rend());
    while (!pending.empty()) {
        ShapeNode& node = *pending.back();
        pending.pop_back();
        insert(node);
        pending.insert(pending.end(), node.children.rbegin(), node.children.rend());
    }
}

void NameIndex::insert(ShapeNode& node) {
    for (const NameKind kind : {NameKind::Local, NameKind::Universal}) {
        const StringView name = givenName(node, kind);
        if (name.empty()) continue;
        ++namesOf(kind).beside.emplace(Beside{node.parent, name}, Bearers{&node, 0}).first->second.count;
        ++namesOf(kind).anywhere.emplace(name, Bearers{&node, 0}).first->second.count;
    }
}

} // namespace tarncom32::standin
