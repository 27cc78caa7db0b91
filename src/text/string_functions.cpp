#include "text/string_functions.h"

#include "automation/convert.h"
#include "frame/report.h"
#include "text/delimited.h"

#include <limits>

namespace tarncom32::text {

using automation::Collection;
using automation::Error;
using automation::Ref;
using automation::VariantType;
using frame::reportAndStop;
using frame::silently;

namespace errors = automation::errors;

namespace {

// A length or position as a host's 32-bit number.
std::int32_t asLong(std::size_t number) {
    if (number > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) throw Error(errors::Overflow);
    return static_cast<std::int32_t>(number);
}

// Likewise as a 16-bit one: where the members narrow a length, longer texts overflow.
std::int16_t asInteger(std::size_t number) {
    if (number > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) throw Error(errors::Overflow);
    return static_cast<std::int16_t>(number);
}

// What `toInteger` reads from the text; most identifiers are a few digits and nothing else.
std::int16_t identifierIn(StringView text) {
    int number = 0;
    for (const char16_t c : text) {
        if (text.size() > 4 || c < u'0' || c > u'9') return toInteger(Variant(text));
        number = number * 10 + (c - u'0');
    }
    return static_cast<std::int16_t>(number);
}

String joined(StringView first, StringView second, StringView third = {}) {
    String text;
    text.reserve(first.size() + second.size() + third.size());
    return text.append(first).append(second).append(third);
}

} // namespace

Variant StringFunctions::removeStringFromCommaDelimitedList(StringView sItem, StringView sList) {
    const std::size_t position = positionOf(sList, sItem);
    if (position == 0) return sList;
    // The item and the comma behind it.
    if (position == 1) return from(sList, sItem.size() + 2);
    const String itemBehindComma = joined(u",", sItem);
    const std::size_t comma = positionOf(sList, itemBehindComma);
    return joined(left(sList, comma), from(sList, comma + itemBehindComma.size()));
}

std::int32_t StringFunctions::numberOfSubStringsInSourceString(StringView sSource, StringView sDelimiter) {
    std::int32_t upperBound = 0;
    silently([&] { upperBound = asLong(countFields(sSource, sDelimiter)) - 1; });
    return upperBound;
}

void StringFunctions::splitStringAtDelimiters(StringView sSource, StringView sDelimiter, StringArray asResult,
                                              std::int16_t iLimit) {
    silently([&] {
        if (iLimit < -1) throw Error(errors::InvalidProcedureCall);
        std::vector<Variant> items;
        if (iLimit == -1) items.reserve(countFields(sSource, sDelimiter));
        const std::size_t limit = iLimit == -1 ? Fields::kUnlimited : static_cast<std::size_t>(iLimit);
        for (Fields fields(sSource, sDelimiter, limit); fields.next();)
            items.emplace_back(fields.field());
        *asResult = Array(VariantType::String, 0, std::move(items));
    });
}

std::int32_t StringFunctions::numberOfElementsInDelimitedString(StringView sSource, StringView sDelimiter) {
    std::int32_t count = 0;
    silently([&] { count = asLong(countFields(sSource, sDelimiter)); });
    return count;
}

Boolean StringFunctions::stringExistsInCollection(const String& sKey, ObjectRef oCollection) {
    Boolean exists = false;
    silently([&] {
        automation::Object& collection = deref(oCollection);
        // A foreign collection's code may change the variable that holds the text.
        const Variant key(sKey);
        if (toLong(collection.get(u"Count")) == 0) return;
        toText(collection.get(u"Item", key));
        exists = true;
    });
    return exists;
}

String StringFunctions::returnStringBeforeDelimiter(StringView sSource, StringView sDelimiter) {
    const std::size_t position = positionOf(sSource, sDelimiter);
    return String(position > 0 ? left(sSource, position - 1) : sSource);
}

String StringFunctions::removeIDFromListWithDelimiter(StringView sList, std::int16_t iID, StringView sDelimiter) {
    String remaining;
    remaining.reserve(sList.size() + sDelimiter.size());
    for (Fields fields(sList, sDelimiter); fields.next();) {
        const StringView field = fields.field();
        if (!field.empty() && identifierIn(field) != iID) remaining.append(field).append(sDelimiter);
    }
    return remaining;
}

String StringFunctions::returnStringAfterDelimiter(StringView sSource, StringView sDelimiter) {
    const std::size_t position = positionOf(sSource, sDelimiter);
    return String(position > 0 ? from(sSource, position + 1) : StringView());
}

String StringFunctions::cleanDate(StringView sDate) {
    String kept = withoutAll(withoutAll(sDate, u"\\"), u"_");
    const StringView trimmed = automation::trim(kept);
    const std::size_t size = trimmed.size();
    if (size > 0) kept.erase(0, static_cast<std::size_t>(trimmed.data() - kept.data()));
    kept.resize(size);
    return kept;
}

String StringFunctions::stringReturnBetween(StringView sSource, StringView sStart, StringView sEnd) {
    const std::int16_t behindStart = asInteger(positionOf(sSource, sStart) + sStart.size());
    const StringView rest = behindStart != 0 ? from(sSource, static_cast<std::size_t>(behindStart)) : sSource;
    const std::size_t end = positionOf(rest, sEnd);
    return String(end > 0 ? left(rest, end - 1) : sSource);
}

std::int16_t StringFunctions::numberOfExactMatchesRemovedFromString(String& sSource, StringView sMatch) {
    String rest = withoutAll(sSource, sMatch);
    const std::int16_t removed = asInteger(automation::trim(sSource).size() - automation::trim(rest).size());
    // Nothing is removed for an empty match, and the hosts call 0 / 0 an overflow.
    if (sMatch.empty()) throw Error(errors::Overflow);
    const std::int16_t matches = automation::roundToInteger(removed / static_cast<double>(sMatch.size()));
    if (matches > 0) return matches;
    sSource = std::move(rest);
    return -1;
}

Boolean StringFunctions::checkForNameInList(StringView sName, StringArray asList, Boolean bIgnoreCase) {
    Boolean found = false;
    silently([&] {
        const bool ignoreCase = bIgnoreCase.isTrue();
        const String name = ignoreCase ? automation::toUpper(sName) : String(sName);
        for (std::int32_t i = asList->lowerBound(), last = asList->upperBound(); i <= last && !found.isTrue(); ++i) {
            const String element = toText(asList->at(i));
            // Changing the case never changes the length.
            if (element.size() == name.size()) found = (ignoreCase ? automation::toUpper(element) : element) == name;
        }
    });
    return found;
}

String StringFunctions::returnStringAfterLastDelimiter(StringView sSource, StringView sDelimiter) {
    String result;
    reportAndStop(platform_.messageBox, describe(), [&] {
        const std::size_t position = positionInReversed(sSource, sDelimiter);
        if (position > 0)
            result = from(sSource, sSource.size() - position + 2);
        else
            result = reverseString(sSource);
    });
    return result;
}

String StringFunctions::returnStringBeforeLastDelimiter(StringView sSource, StringView sDelimiter) {
    String result;
    reportAndStop(platform_.messageBox, describe(), [&] {
        const std::size_t position = positionInReversed(sSource, sDelimiter);
        if (position > 0)
            result = left(sSource, sSource.size() - position);
        else
            result = reverseString(sSource);
    });
    return result;
}

String StringFunctions::reverseString(StringView sText) {
    String result;
    reportAndStop(platform_.messageBox, describe(), [&] { result = reversed(sText); });
    return result;
}

Ref<Collection> StringFunctions::createCollectionFromString(StringView sStream) {
    auto collection = automation::make<Collection>();
    for (Fields fields(sStream, u";"); fields.next();) {
        const StringView field = fields.field();
        collection->add(returnStringAfterDelimiter(field, u"!"), returnStringBeforeDelimiter(field, u"!"));
    }
    return collection;
}

String StringFunctions::returnStringBeforeNthDelimiter(StringView sSource, StringView sDelimiter, std::int32_t lN) {
    return String(left(sSource, positionOfNth(sSource, sDelimiter, lN)));
}

String StringFunctions::returnStringAfterNthDelimiter(StringView sSource, StringView sDelimiter, std::int32_t lN) {
    return String(from(sSource, positionOfNth(sSource, sDelimiter, lN)));
}

String StringFunctions::replaceValueInStream(StringView sStream, StringView sDelimiter, StringView sNewValue,
                                             std::int32_t lN) {
    if (lN == std::numeric_limits<std::int32_t>::max()) throw Error(errors::Overflow);
    const std::size_t nth = positionOfNth(sStream, sDelimiter, lN);
    // The search for the delimiter after the n-th goes on where the one for the n-th ended; below 1 they are the same.
    const std::size_t next = lN < 1 ? nth : positionOf(sStream, sDelimiter, nth);
    return joined(left(sStream, nth), sNewValue, from(sStream, next));
}

} // namespace tarncom32::text
