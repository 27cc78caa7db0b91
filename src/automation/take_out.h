#pragma once

#include <utility>

namespace tarncom32::automation {

/// Takes the element at `place` out of a list. It goes, with what it refers to, when the caller lets go of the result:
/// the list is whole again by then, which matters because the end of an object may come back to it.
template <class List>
[[nodiscard]] typename List::value_type takeOut(List& list, typename List::iterator place) {
    typename List::value_type taken = std::move(*place);
    list.erase(place);
    return taken;
}

} // namespace tarncom32::automation
