#pragma once

#include "automation/string.h"

#include <cstdint>

/// Operations on the text of paths and file names: no file is looked at. The path separator is "\" and nothing else.
/// Lengths count UTF-16 characters.
namespace tarncom32::files {

/// A text in two parts.
struct TextPair {
    automation::StringView first;
    automation::StringView second;
};

/// Folder and file name: what stands before and behind the last "\", which goes to neither. Without one all of it is
/// the file name.
TextPair splitPath(automation::StringView fullTitle);

/// Name and extension: what stands before the last "." and from it on, the dot included. A dot in a folder's name
/// counts as well. Without one all of it is the name.
TextPair splitExtension(automation::StringView name);

/// A path of more than 20 characters becomes its first folder, with the separator, then "...\"; all the rest goes,
/// the file name too, which is meant. Without a separator "...\" alone is left.
automation::String shortenPath(automation::StringView path);

/// A name of more than 20 characters becomes its first 29 and "...": between 21 and 29 it only grows, which is meant.
automation::String shortenFileName(automation::StringView name);

/// Whether the name's last 4 characters are the extension, without regard to case: an extension of another length than
/// that of ".vsd" never is.
bool hasExtension(automation::StringView name, automation::StringView extension);

/// Whether the name's last 4 characters stand anywhere in the list, which needs no separator. Case counts, unlike in
/// `hasExtension`. An empty name is in every list that is not empty.
bool isExtensionInList(automation::StringView name, automation::StringView list);

/// The characters that `FileOperations::cleanFileName` replaces, in this order. The asterisk and the quote, which no
/// file name may have either, are not among them.
inline constexpr automation::StringView kUncleanCharacters = u"\\/:?<>|";

/// `text` with every `character` replaced by "_".
automation::String replaceWithUnderscore(automation::String text, char16_t character);

/// A path of more than `maximum` characters loses its last folders, as many as it takes, and has "\...\" in their
/// place. It gets no shorter than "\...\" and the file name.
automation::String limitLength(automation::StringView fullName, std::int16_t maximum);

} // namespace tarncom32::files
