#include "text/string_functions.h"

namespace tarncom32::text {

using automation::ClassInfo;
using automation::in;
using automation::inOut;
using automation::out;
using automation::operator""_guid;
using F = StringFunctions;

namespace member = automation::member;

const ClassInfo& StringFunctions::describe() {
    static const ClassInfo info(
        kClassName, u"Delimited lists and streams of text.", "742b0880-9faa-4d8e-b4de-086f4faa22d3"_guid,
        "0e4822ed-a1b2-42d2-8145-d503efe5c7ac"_guid,
        {
            member::method<&F::removeStringFromCommaDelimitedList>(
                1, u"RemoveStringFromCommaDelimitedList", {in(u"sItem"), in(u"sList")},
                u"The list without the first occurrence of the text sItem; commas on both sides of it stay."),
            member::method<&F::numberOfSubStringsInSourceString>(
                2, u"NumberOfSubStringsInSourceString", {in(u"sSource"), in(u"sDelimiter")},
                u"The number of delimiters in the source; -1 for an empty source."),
            member::silent(member::method<&F::splitStringAtDelimiters>(
                3, u"SplitStringAtDelimiters", {in(u"sSource"), in(u"sDelimiter"), out(u"asResult"), in(u"iLimit")},
                u"Fills asResult with the fields of the source, from 0; at most iLimit fields, all of them for -1.")),
            member::method<&F::numberOfElementsInDelimitedString>(
                4, u"NumberOfElementsInDelimitedString", {in(u"sSource"), in(u"sDelimiter")},
                u"The number of fields in the source, empty ones included; 0 for an empty source."),
            member::method<&F::stringExistsInCollection>(
                5, u"StringExistsInCollection", {in(u"sKey"), in(u"oCollection")},
                u"Whether the collection has an item under the key that converts to text."),
            member::method<&F::isBlank, member::byReference(1)>(
                6, u"IsBlank", {in(u"vValue")},
                u"Whether the value counts as empty: nothing, 0, spaces only, or an array of "
                u"such values. True counts as blank, False does not."),
            member::method<&F::returnStringBeforeDelimiter>(
                7, u"ReturnStringBeforeDelimiter", {in(u"sSource"), in(u"sDelimiter")},
                u"The source up to the first delimiter; all of it when there is none."),
            member::method<&F::removeIDFromListWithDelimiter>(
                8, u"RemoveIDFromListWithDelimiter", {in(u"sList"), in(u"iID"), in(u"sDelimiter")},
                u"The numbers of the list without those equal to iID, each followed by the delimiter."),
            member::method<&F::returnStringAfterDelimiter>(
                9, u"ReturnStringAfterDelimiter", {in(u"sSource"), in(u"sDelimiter")},
                u"The source behind the first character of the first delimiter; empty when there is none."),
            member::method<&F::cleanDate>(10, u"CleanDate", {in(u"sDate")},
                                          u"The text without backslashes, underscores and outer spaces."),
            member::method<&F::stringReturnBetween>(
                11, u"StringReturnBetween", {in(u"sSource"), in(u"sStart"), in(u"sEnd")},
                u"The text between two markers; the whole source when the end marker is absent."),
            member::method<&F::numberOfExactMatchesRemovedFromString>(
                12, u"NumberOfExactMatchesRemovedFromString", {inOut(u"sSource"), in(u"sMatch")},
                u"How often sMatch stands in the source, by the length that removing it takes away; -1 when that gives "
                u"0, and then the source becomes the text without it."),
            member::method<&F::checkForNameInList>(
                13, u"CheckForNameInList", {in(u"sName"), in(u"asList"), in(u"bIgnoreCase")},
                u"Whether the array holds the name; without regard to case only for a bIgnoreCase of exactly True."),
            member::method<&F::returnStringAfterLastDelimiter>(
                14, u"ReturnStringAfterLastDelimiter", {in(u"sSource"), in(u"sDelimiter")},
                u"The source behind the last delimiter; the source reversed when there is none."),
            member::method<&F::returnStringBeforeLastDelimiter>(
                15, u"ReturnStringBeforeLastDelimiter", {in(u"sSource"), in(u"sDelimiter")},
                u"The source in front of the last delimiter; the source reversed when there is none."),
            member::method<&F::reverseString>(16, u"ReverseString", {in(u"sText")},
                                              u"The text from its last character to its first."),
            member::method<&F::createCollectionFromString>(
                17, u"CreateCollectionFromString", {in(u"sStream")},
                u"A new collection of the stream's fields \"key!value\", which semicolons separate."),
            member::method<&F::returnStringBeforeNthDelimiter>(18, u"ReturnStringBeforeNthDelimiter",
                                                               {in(u"sSource"), in(u"sDelimiter"), in(u"lN")},
                                                               u"The source up to and with the n-th delimiter."),
            member::method<&F::returnStringAfterNthDelimiter>(
                19, u"ReturnStringAfterNthDelimiter", {in(u"sSource"), in(u"sDelimiter"), in(u"lN")},
                u"The source from the n-th delimiter on, the delimiter included."),
            member::method<&F::replaceValueInStream>(
                20, u"ReplaceValueInStream", {in(u"sStream"), in(u"sDelimiter"), in(u"sNewValue"), in(u"lN")},
                u"The stream with sNewValue between the n-th delimiter and the next."),
        });
    return info;
}

} // namespace tarncom32::text
