#pragma once

#include "frame/published_library.h"

#include <string>

namespace tarncom32::tests::contract {

/// What the member tables of a library say of its contract, in the words of the checked-in texts.
std::string tableText(const frame::PublishedLibrary& library);

} // namespace tarncom32::tests::contract
