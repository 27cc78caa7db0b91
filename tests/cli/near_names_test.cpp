#include "cli/near_names.h"

#include <gtest/gtest.h>

namespace tarncom32::cli {
namespace {

TEST(NearNames, FindWhatWasMeant) {
    const std::vector<automation::StringView> names = {u"Item", u"Items", u"ItemU", u"ItemFromID", u"Name", u"Count"};
    const struct {
        automation::StringView wanted;
        std::string hint;
    } cases[] = {
        {u"Conut", "; did you mean Count?"},
        {u"ITEMX", "; did you mean Item, Items or ItemU?"},
        {u"FromId", "; did you mean ItemFromID?"},
        {u"Quantity", ""},
        {u"", ""},
    };
    for (const auto& line : cases)
        EXPECT_EQ(didYouMean(line.wanted, names), line.hint) << automation::toUtf8(line.wanted);
    EXPECT_EQ(didYouMean(automation::String(1'000'000, u'x'), names), "");
}

} // namespace
} // namespace tarncom32::cli
