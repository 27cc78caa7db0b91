#pragma once

#include <array>

namespace tarncom32::com {

/// The first seven entries of every dual interface: IUnknown and IDispatch.
std::array<const void*, 7> dispatchEntries();

} // namespace tarncom32::com
