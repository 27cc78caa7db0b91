#pragma once

#include "automation/collection.h"
#include "automation/members.h"
#include "platform/platform.h"

namespace tarncom32::text {

using automation::Array;
using automation::Boolean;
using automation::ObjectRef;
using automation::String;
using automation::StringArray;
using automation::StringView;
using automation::Variant;

/// Text utilities for the small parsing jobs of add-ins: lists such as "a,b,c", streams such as "key!value;key!value",
/// the text before or after a marker, counting and removing occurrences.
///
/// Positions are 1-based, 0 says that nothing was found. Searches compare character codes and find the first
/// occurrence from the left; an empty text is found at the start of any text that is not empty. Only
/// `numberOfExactMatchesRemovedFromString` writes back to its text. What a member does on failure stands at its
/// sentence; a member that names none raises the failure to the caller.
class StringFunctions final : public automation::Described<StringFunctions> {
public:
    static constexpr StringView kClassName = u"StringFunctions";
    static constexpr bool kTextsByReference = true;
    static const automation::ClassInfo& describe();

    /// Failures are reported through the platform's message box.
    explicit StringFunctions(platform::Platform& platform) : platform_(platform) {}

    /// The list without the first occurrence of the item, which is looked for as a piece of text, not as a field.
    /// An item at the start goes with the comma behind it; one further on leaves the commas on both of its sides
    /// ("b" from "a,b,c" gives "a,,c"). An item that only stands inside a longer field and not behind a comma cuts the
    /// list's start instead ("b" from "ab,c" gives "b,c"). All of this is meant; for a clean list there is
    /// `removeIDFromListWithDelimiter`. The result holds text.
    Variant removeStringFromCommaDelimitedList(StringView sItem, StringView sList);

    /// The number of delimiters that a split of the source finds: -1 for an empty source, 0 for an empty delimiter.
    /// Silent.
    std::int32_t numberOfSubStringsInSourceString(StringView sSource, StringView sDelimiter);

    /// Makes `asResult` the fields of the source, counted from 0. A limit above 0 is the largest number of fields, the
    /// last of which keeps the rest of the source; -1 is no limit and 0 gives no field. An empty source has no fields.
    /// Silent: a limit below -1 leaves the array as it is.
    void splitStringAtDelimiters(StringView sSource, StringView sDelimiter, StringArray asResult, std::int16_t iLimit);

    /// The number of fields, empty ones included: 0 for an empty source. Silent.
    std::int32_t numberOfElementsInDelimitedString(StringView sSource, StringView sDelimiter);

    /// Whether the collection has an item under the key `sKey` (not: an item with that value) that converts to text.
    /// Silent: any failure means false.
    Boolean stringExistsInCollection(const String& sKey, ObjectRef oCollection);

    /// Whether a value counts as empty: Empty, Null, errors and records; 0 of any number type or date; text of spaces
    /// only; Nothing; arrays without bounds, without elements, or with nothing but blank elements. A Boolean is its own
    /// answer, so that true is blank and false is not: this inversion is meant. Raises 9 for an array of integers,
    /// longs, bytes that has no bounds: only for the other element types is that state asked for first.
    Boolean isBlank(const Variant& vValue);

    /// The source up to the first delimiter; all of it without one.
    String returnStringBeforeDelimiter(StringView sSource, StringView sDelimiter);

    /// The list's identifiers without those equal to `iID` and without empty fields, each followed by the delimiter
    /// ("1;2;3;2" less 2 gives "1;3;"). Raises 13 for a field that is no number, 6 for one beyond 16 bits.
    String removeIDFromListWithDelimiter(StringView sList, std::int16_t iID, StringView sDelimiter);

    /// The source behind the first character of the first delimiter; "" without one. The skip is one character however
    /// long the delimiter is, which is meant: callers pass delimiters of one character.
    String returnStringAfterDelimiter(StringView sSource, StringView sDelimiter);

    /// The text without backslashes and underscores, then trimmed of spaces. It is not read as a date.
    String cleanDate(StringView sDate);

    /// The text between the first start marker and the first end marker behind it; the whole source when the end
    /// marker is absent. A start marker of two or more characters that is absent still hides the source's first
    /// characters, one fewer than it has itself. Raises 6 when the place behind the start marker is beyond 32767.
    String stringReturnBetween(StringView sSource, StringView sStart, StringView sEnd);

    /// Tells how often `sMatch` stands in the source by what removing it takes away: the difference of the trimmed
    /// lengths, divided by the match's length and rounded (a half to the even number). A number above 0 is returned and
    /// the source stays; else the source becomes the text without the matches and the result is -1. Spaces that come
    /// to lie outside count as taken away ("a b" less "b" is 2). Raises 6 for an empty match, and for a difference
    /// above 32767.
    std::int16_t numberOfExactMatchesRemovedFromString(String& sSource, StringView sMatch);

    /// Whether the array holds the name; without regard to case when the flag is exactly true (-1), while any other
    /// flag, 1 among them, asks for the exact name. Silent: an array without bounds holds nothing.
    Boolean checkForNameInList(StringView sName, StringArray asList, Boolean bIgnoreCase);

    /// The source behind the last delimiter; the source reversed when there is none, which is meant. The delimiter is
    /// looked for in the reversed source, so that one of several characters is found where it stands backwards.
    /// Reports and stops, with "".
    String returnStringAfterLastDelimiter(StringView sSource, StringView sDelimiter);

    /// The source in front of the last delimiter (of its last character, when it has several); otherwise as
    /// `returnStringAfterLastDelimiter`. Reports and stops, with "".
    String returnStringBeforeLastDelimiter(StringView sSource, StringView sDelimiter);

    /// The text from its last character to its first. Reports and stops.
    String reverseString(StringView sText);

    /// A new collection of the stream's fields "key!value", separated by ";": each value under its key. A field
    /// without "!" is a key with the value "". Raises 457 for a key that comes twice (keys are compared without regard
    /// to case) and 5 for an empty key, as a ";" at the end makes one.
    automation::Ref<automation::Collection> createCollectionFromString(StringView sStream);

    /// The source up to and with the first character of the n-th delimiter ("a,b,c", ",", 2 gives "a,b,"). With fewer
    /// delimiters the search goes round: one search that finds nothing, which gives "", then the first delimiter again.
    /// `lN` below 1 is 1.
    String returnStringBeforeNthDelimiter(StringView sSource, StringView sDelimiter, std::int32_t lN);

    /// The source from the n-th delimiter on, delimiter included ("a,b,c", ",", 2 gives ",c"); goes round likewise.
    /// Raises 5 where the last search found nothing.
    String returnStringAfterNthDelimiter(StringView sSource, StringView sDelimiter, std::int32_t lN);

    /// The stream with `sNewValue` in place of what stands between the n-th delimiter and the next ("a,b,c", ",", "X",
    /// 1 gives "a,X,c"). An `lN` of 0 inserts behind the first delimiter. Raises 5 when the stream ends before the next
    /// delimiter, 6 for the largest `lN`.
    String replaceValueInStream(StringView sStream, StringView sDelimiter, StringView sNewValue, std::int32_t lN);

private:
    platform::Platform& platform_;
};

} // namespace tarncom32::text
