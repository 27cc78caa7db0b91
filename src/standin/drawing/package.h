#pragma once

#include "standin/drawing/zip_archive.h"

#include <map>
#include <string>
#include <string_view>

namespace tarncom32::standin::drawing {

/// One relationship of a part to another.
struct Relationship {
    std::string type;   ///< a URI that says what the other part is
    std::string target; ///< as written: a path relative to the first part's folder, or from the package's root
    bool external = false;
};

/// The relationships of one part by their ids, of which no two are the same.
using Relationships = std::map<std::string, Relationship, std::less<>>;

/// The relationship types that lead through a drawing.
namespace relation {
inline constexpr std::string_view document = "http://schemas.microsoft.com/visio/2010/relationships/document";
inline constexpr std::string_view pages = "http://schemas.microsoft.com/visio/2010/relationships/pages";
inline constexpr std::string_view page = "http://schemas.microsoft.com/visio/2010/relationships/page";
inline constexpr std::string_view masters = "http://schemas.microsoft.com/visio/2010/relationships/masters";
inline constexpr std::string_view master = "http://schemas.microsoft.com/visio/2010/relationships/master";
} // namespace relation

/// The relationships of `source` ("" for the package itself); none when it has no relationships part.
[[nodiscard]] Relationships readRelationships(ZipArchive& archive, std::string_view source);

/// The content type of a part by [Content_Types].xml: its own, else that of its extension, else "".
[[nodiscard]] std::string contentTypeOf(ZipArchive& archive, std::string_view part);

/// The part that a relationship of `source` leads to. Raises a DrawingError about `source`'s relationships part when
/// the target is outside the package or its path is a trick, and about the target itself when it is missing.
[[nodiscard]] std::string followRelationship(const ZipArchive& archive, std::string_view source,
                                             const Relationship& relationship);

/// The part that the one relationship of that type leads to; "" when there is none. Raises when there are several.
[[nodiscard]] std::string followOnly(const ZipArchive& archive, std::string_view source,
                                     const Relationships& relationships, std::string_view type);

} // namespace tarncom32::standin::drawing
