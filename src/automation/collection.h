#pragma once

#include "automation/members.h"

#include <unordered_map>

namespace tarncom32::automation {

/// An ordered list of variants, counted from 1, whose items may have keys: unique texts, compared without regard to
/// case. The hosts' standard collection.
class Collection final : public Described<Collection> {
public:
    static constexpr StringView kClassName = u"Collection";
    static const ClassInfo& describe();

    /// Appends `vItem`, or puts it in front of the item `vBefore` or behind the item `vAfter` (a position or a key;
    /// not both: 5). Raises 457 when the key is there already, 13 when the key is no text, 5 when it is empty or the
    /// neighbour does not exist.
    void add(const Variant& vItem, const Variant& vKey = kMissing, const Variant& vBefore = kMissing,
             const Variant& vAfter = kMissing);
    /// The item at a position or under a key. Raises 9 for a position outside 1 to `count()`, 5 for an unknown key.
    Variant item(const Variant& vIndex);
    /// Takes the item out; raises as `item` does.
    void remove(const Variant& vIndex);
    std::int32_t count();
    /// An enumerator of the items; it sees items that are added behind its place meanwhile.
    std::unique_ptr<Enumerator> newEnum();

    std::size_t size() const { return entries_.size(); }
    /// The item at a 0-based position below `size()`.
    const Variant& operator[](std::size_t position) const { return entries_[position].item; }

protected:
    ~Collection() override;

private:
    struct Entry {
        Variant item;
        String key; ///< folded; empty without one
    };

    std::size_t positionOf(const Variant& index) const;
    std::size_t neighbour(const Variant& index) const;
    std::size_t insertionPoint(const Variant& before, const Variant& after) const;

    std::vector<Entry> entries_;
    /// Where each key stood when it was last looked at: right for a list that only grew, a hint else.
    mutable std::unordered_map<String, std::size_t> places_;
};

/// Enumerates a list by position: `List` offers size() and operator[], and is kept alive.
template <class List>
class ListEnumerator final : public Enumerator {
public:
    explicit ListEnumerator(Ref<List> list, std::size_t position = 0) : list_(std::move(list)), position_(position) {}
    bool next(Variant& item) override {
        if (position_ >= list_->size()) return false;
        item = Variant((*list_)[position_++]);
        return true;
    }
    std::unique_ptr<Enumerator> clone() const override { return std::make_unique<ListEnumerator>(list_, position_); }

private:
    Ref<List> list_;
    std::size_t position_;
};

/// Calls `visit(item)` for each item of `collection`, in order.
template <class F>
void forEach(Object& collection, F&& visit) {
    const std::unique_ptr<Enumerator> items = collection.enumerate();
    for (Variant item; items->next(item);)
        visit(item);
}

} // namespace tarncom32::automation
