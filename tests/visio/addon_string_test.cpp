#include "visio/addon_string.h"

#include <gmock/gmock.h>

namespace tarncom32::visio {
namespace {

using automation::StringView;

TEST(AddonString, Fields) {
    const std::tuple<StringView, std::int16_t, std::int16_t, StringView, bool, StringView> cases[] = {
        {u"/doc=2 /page=3 /shape=Sheet.5 extra", 2, 3, u"Sheet.5", false, u"extra "},
        {u"", 0, 0, u"", false, u""},
        {u"a  b", 0, 0, u"", false, u"a  b "},
        {u"/Doc=1", 0, 0, u"", false, u"/Doc=1 "},
        {u"x/doc=1", 0, 0, u"", false, u"x/doc=1 "},
        {u"/doc=1 /doc=4", 4, 0, u"", false, u""},
        {u"/doc=7th", 7, 0, u"", false, u""},
        {u"/doc=2 /doc=none", 0, 0, u"", false, u""},   // no number is 0
        {u"/doc=2.5 /doc=3.5", 4, 0, u"", false, u""},  // halves to even
        {u"/doc=2 /doc=99999", 2, 0, u"", false, u""},  // no room in 16 bits: skipped
        {u"/page=2 /page=x", 0, 2, u"", false, u""},    // no number: the page stays
        {u"/shapeu=A /shape=B", 0, 0, u"B", true, u""}, // the flag stays set
    };
    for (const auto& [text, document, page, shape, universal, others] : cases)
        EXPECT_THAT(parseAddonString(text), testing::FieldsAre(document, page, shape, universal, others))
            << automation::toUtf8(text);
}

} // namespace
} // namespace tarncom32::visio
