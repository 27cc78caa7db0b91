#pragma once

#include "automation/object.h"
#include "platform/code_page.h"

/// Text and Visio operations that several classes share. Texts pass through the 8-bit code page on their way in, so
/// a character that it lacks is a "?" from here on.
namespace tarncom32::frame {

/// `source` with every `placeHolder` in it replaced by `replacement`, from left to right. An empty placeholder
/// replaces nothing.
automation::String replaceResourcePlaceHolder(const platform::CodePage& codePage, automation::StringView source,
                                              automation::StringView replacement, automation::StringView placeHolder);

/// The plain text that a cell's formula denotes: the contents of a string literal, without its quotes and with its
/// doubled quotes made single. Any other formula is returned as it stands.
automation::String stringFromVisio(const platform::CodePage& codePage, automation::StringView formula);

/// Whether a shape belongs to an application: its "User.Application" cell, read as plain text, equals the name
/// exactly. A shape without the cell belongs to none, nor does one that fails to answer.
bool weCareAboutThisShape(const platform::CodePage& codePage, automation::Object& shape,
                          automation::StringView applicationName);

} // namespace tarncom32::frame
