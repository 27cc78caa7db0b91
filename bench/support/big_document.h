#pragma once

#include "standin/application.h"

#include <cstdint>

namespace tarncom32::bench {

/// A new document in `application` with `shapeCount` shapes on its first page, drawn through the object model: ten
/// shapes to a group, of which three are groups again, group after group until the shapes are used up.
automation::ObjectRef drawBigDocument(standin::Application& application, std::int32_t shapeCount);

} // namespace tarncom32::bench
