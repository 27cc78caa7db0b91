#pragma once

#include "standin/model/container.h"

namespace tarncom32::standin {

/// The page or master that an `Item` argument means: a position from 1, a name of that kind, or a unique ID. Raises
/// the errors of Visio when there is none.
Container& itemOf(const std::vector<Container*>& list, const Variant& index, NameKind names);
/// The page or master of an ID. Raises "Invalid sheet identifier" when there is none.
Container& itemFromId(const std::vector<Container*>& list, std::int32_t id);
/// The position from 1.
std::int16_t positionOf(const std::vector<Container*>& list, const Container& item);
/// Gives a page or master a name, the first time its universal one too. Raises when it is empty or another has it.
void rename(const std::vector<Container*>& list, Container& item, StringView name, NameKind kind);
/// `stem` and the first number from `number` on that no name in the list has.
String freeName(const std::vector<Container*>& list, StringView stem, long long number);

} // namespace tarncom32::standin
