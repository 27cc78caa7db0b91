#include "automation/collection.h"

#include "automation/take_out.h"

namespace tarncom32::automation {

const ClassInfo& Collection::describe() {
    static const ClassInfo info(
        kClassName, u"An ordered list of values, counted from 1, some of them under a key.", {},
        "3b0f7c0e-6f0a-4d0e-9f0b-2a2f6f1d4c57"_guid,
        {
            member::method<&Collection::item>(kDispidValue, u"Item", {in(u"vIndex")},
                                              u"The item at a position or under a key."),
            member::method<&Collection::add>(
                1, u"Add", {in(u"vItem"), optional(in(u"vKey")), optional(in(u"vBefore")), optional(in(u"vAfter"))},
                u"Adds an item, at the end unless a neighbour is named."),
            member::method<&Collection::count>(2, u"Count", {}, u"The number of items."),
            member::method<&Collection::remove>(3, u"Remove", {in(u"vIndex")},
                                                u"Removes the item at a position or under a key."),
            member::newEnum<&Collection::newEnum>(),
        });
    return info;
}

std::size_t Collection::positionOf(const Variant& index) const {
    if (const auto* key = index.as<String>()) {
        const String folded = toUpper(*key);
        const auto found = places_.find(folded);
        if (folded.empty() || found == places_.end()) throw Error(errors::InvalidProcedureCall);
        std::size_t& place = found->second;
        if (place >= entries_.size() || entries_[place].key != folded) {
            // Items moved since: find all keys anew, once for all of them.
            for (std::size_t i = 0; i < entries_.size(); ++i)
                if (!entries_[i].key.empty()) places_[entries_[i].key] = i;
        }
        return place;
    }
    const std::int32_t position = toLong(index);
    if (position < 1 || static_cast<std::size_t>(position) > entries_.size()) throw Error(errors::SubscriptOutOfRange);
    return static_cast<std::size_t>(position) - 1;
}

std::size_t Collection::neighbour(const Variant& index) const {
    try {
        return positionOf(index);
    } catch (const Error& error) {
        if (error.number() == errors::SubscriptOutOfRange) throw Error(errors::InvalidProcedureCall);
        throw;
    }
}

std::size_t Collection::insertionPoint(const Variant& before, const Variant& after) const {
    if (!before.isMissing() && !after.isMissing()) throw Error(errors::InvalidProcedureCall);
    if (!before.isMissing()) return neighbour(before);
    return after.isMissing() ? entries_.size() : neighbour(after) + 1;
}

void Collection::add(const Variant& vItem, const Variant& vKey, const Variant& vBefore, const Variant& vAfter) {
    String key;
    if (!vKey.isMissing()) {
        const auto* text = vKey.as<String>();
        if (!text) throw Error(errors::TypeMismatch);
        if (text->empty()) throw Error(errors::InvalidProcedureCall);
        key = toUpper(*text);
        if (places_.contains(key)) throw Error(errors::DuplicateKey);
    }
    const std::size_t at = insertionPoint(vBefore, vAfter);
    // What takes memory comes first, so that the list and the keys always agree.
    if (entries_.size() == entries_.capacity()) entries_.reserve(entries_.size() * 2 + 4);
    Entry entry{vItem, key};
    if (!key.empty()) places_.emplace(std::move(key), at);
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(at), std::move(entry));
}

Variant Collection::item(const Variant& vIndex) {
    return entries_[positionOf(vIndex)].item;
}

void Collection::remove(const Variant& vIndex) {
    const auto entry = entries_.begin() + static_cast<std::ptrdiff_t>(positionOf(vIndex));
    const Entry gone = takeOut(entries_, entry);
    places_.erase(gone.key);
}

Collection::~Collection() {
    // The end of an item may still come to this list.
    places_.clear();
    const std::vector<Entry> gone = std::exchange(entries_, {});
}

std::int32_t Collection::count() {
    return static_cast<std::int32_t>(entries_.size());
}

std::unique_ptr<Enumerator> Collection::newEnum() {
    return std::make_unique<ListEnumerator<Collection>>(Ref<Collection>(this));
}

} // namespace tarncom32::automation
