#include "standin/model/container_list.h"

#include "automation/convert.h"
#include "standin/visio_error.h"

#include <algorithm>

namespace tarncom32::standin {

using automation::equalsIgnoreCase;

namespace {

Container* findName(const std::vector<Container*>& list, StringView name, NameKind kind) {
    const auto found = std::ranges::find_if(list, [&](const Container* item) {
        return equalsIgnoreCase(kind == NameKind::Local ? item->name : item->nameU, name) ||
               (!item->uniqueId.empty() && equalsIgnoreCase(item->uniqueId, name));
    });
    return found == list.end() ? nullptr : *found;
}

} // namespace

Container& itemOf(const std::vector<Container*>& list, const Variant& index, NameKind names) {
    if (const auto* name = index.as<String>()) {
        if (Container* found = findName(list, *name, names)) return *found;
        throw visio_error::objectNameNotFound();
    }
    const std::int32_t position = automation::toLong(index);
    if (position < 1 || static_cast<std::size_t>(position) > list.size()) throw visio_error::positionOutOfRange();
    return *list[static_cast<std::size_t>(position) - 1];
}

Container& itemFromId(const std::vector<Container*>& list, std::int32_t id) {
    const auto found = std::ranges::find(list, static_cast<std::uint32_t>(id), &Container::id);
    if (found == list.end()) throw visio_error::invalidSheetIdentifier();
    return **found;
}

std::int16_t positionOf(const std::vector<Container*>& list, const Container& item) {
    const auto place = std::ranges::find(list, &item) - list.begin();
    return automation::roundToInteger(static_cast<double>(place + 1));
}

void rename(const std::vector<Container*>& list, Container& item, StringView name, NameKind kind) {
    if (name.empty()) throw visio_error::invalidParameter(u"a name cannot be empty");
    const bool both = !item.renamed;
    for (const NameKind each : {NameKind::Local, NameKind::Universal}) {
        if (each != kind && !both) continue;
        const Container* owner = findName(list, name, each);
        if (owner && owner != &item) throw visio_error::nameInUse(name);
    }
    if (both || kind == NameKind::Local) item.name = name;
    if (both || kind == NameKind::Universal) item.nameU = name;
    item.renamed = true;
}

String freeName(const std::vector<Container*>& list, StringView stem, long long number) {
    for (;; ++number) {
        String name = String(stem) + automation::decimalText(number);
        if (!findName(list, name, NameKind::Local) && !findName(list, name, NameKind::Universal)) return name;
    }
}

} // namespace tarncom32::standin
