#pragma once

#include "cli/session.h"

namespace tarncom32::cli {

/// What the add-in has: a line for each thing, then a table of the shapes.
void printSession(const Output& output, const Session& session);

/// One object: `drawing`, `visio` (`version`, `majorVersion`), `addonArgs`,
/// `parameters`, `document` (`name`, `fullName`), `page` (`name`, `nameU`,
/// `index`, `background`), `shape` (`name`, `nameU`), `version` (`document`,
/// `wanted`, `suits`), `application`, `shapes` (each with `depth`, `name`,
/// `nameU`, `kept`), and the messages that the user saw as `reports` where
/// there are any. What there is not is null.
void printSessionAsJson(const Output& output, const Session& session, const std::vector<std::string>& reports);

} // namespace tarncom32::cli
