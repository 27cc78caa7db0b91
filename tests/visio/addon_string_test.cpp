#include "visio/addon_string.h"

#include <gtest/gtest.h>

namespace tarncom32::visio {
namespace {

using automation::StringView;

struct FieldCase {
    StringView text;
    std::int16_t document;
    std::int16_t page;
    StringView shape;
    bool universal;
    StringView others;
};

TEST(AddonString, Fields) {
    const FieldCase cases[] = {
        {u"/doc=2 /page=3 /shape=Sheet.5 extra", 2, 3, u"Sheet.5", false, u"extra "},
        {u"/shapeu=Box /doc=1 /page=1", 1, 1, u"Box", true, u""},
        {u"", 0, 0, u"", false, u""},
        {u" ", 0, 0, u"", false, u"  "},
        {u"a  b", 0, 0, u"", false, u"a  b "},
        {u"/Doc=1", 0, 0, u"", false, u"/Doc=1 "},
        {u"x/doc=1", 0, 0, u"", false, u"x/doc=1 "},
        {u"/doc=1 /doc=4", 4, 0, u"", false, u""},
        {u"/doc=7th", 7, 0, u"", false, u""},
        {u"/doc=2 /doc=none", 0, 0, u"", false, u""},  // no number is 0
        {u"/doc=2.5 /doc=3.5", 4, 0, u"", false, u""}, // halves to even
        {u"/doc=2 /doc=99999", 2, 0, u"", false, u""}, // no room in 16 bits: skipped
        {u"/page=2 /page=x", 0, 2, u"", false, u""},   // no number: the page stays
        {u"/page=3 /page=", 0, 3, u"", false, u""},
        {u"/page=7th", 0, 0, u"", false, u""},
        {u"/shapeu=A /shape=B", 0, 0, u"B", true, u""}, // the flag stays set
        {u"/shape=", 0, 0, u"", false, u""},
        {u"/shape=two words", 0, 0, u"two", false, u"words "},
    };
    for (const FieldCase& c : cases) {
        SCOPED_TRACE(automation::toUtf8(c.text));
        const AddonString addon = parseAddonString(c.text);
        EXPECT_EQ(addon.document, c.document);
        EXPECT_EQ(addon.page, c.page);
        EXPECT_EQ(addon.shape, c.shape);
        EXPECT_EQ(addon.shapeIsUniversalName, c.universal);
        EXPECT_EQ(addon.others, c.others);
    }
}

} // namespace
} // namespace tarncom32::visio
