#pragma once

#include "automation/string.h"

#include <vector>

namespace tarncom32::cli {

/// The names, at most three and the nearest first, that somebody who wrote `wanted` may have meant: misspelt by a few
/// letters, or with a part left out. Letter case does not count.
std::vector<automation::StringView> nearNames(automation::StringView wanted,
                                              const std::vector<automation::StringView>& names);

/// "; did you mean A, B or C?" for such names; "" when nothing is near.
std::string didYouMean(automation::StringView wanted, const std::vector<automation::StringView>& names);

} // namespace tarncom32::cli
