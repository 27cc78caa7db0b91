#pragma once

#include <string>
#include <string_view>

namespace tarncom32::standin::drawing {

/// The name a part is looked up by: part names are compared without regard to ASCII case.
[[nodiscard]] std::string partKey(std::string_view name);

/// The part that a relationship's target names, as seen from `source` ("" for the package itself): "../a.xml" next to
/// "visio/pages/pages.xml" is "visio/a.xml"; "/visio/a.xml" counts from the root of the package. On a target that does
/// not name a part of this package (it leads out of it, is a URL, has a drive, a backslash or a query, an encoded
/// separator) `part` stays empty and `problem` says why.
struct ResolvedTarget {
    std::string part;
    std::string problem;
};

/// See ResolvedTarget.
[[nodiscard]] ResolvedTarget resolveTarget(std::string_view source, std::string_view target);

/// The part that holds the relationships of `source`: "visio/_rels/document.xml.rels" for "visio/document.xml",
/// "_rels/.rels" for "".
[[nodiscard]] std::string relationshipsPart(std::string_view source);

} // namespace tarncom32::standin::drawing
