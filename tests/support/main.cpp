#include "automation/object.h"

#include <gmock/gmock.h>

namespace {

/// Fails a test that leaves objects of the library alive.
class LiveObjectCheck final : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { before_ = tarncom32::automation::Object::liveCount(); }
    void OnTestEnd(const testing::TestInfo&) override {
        EXPECT_EQ(tarncom32::automation::Object::liveCount(), before_) << "objects of the library outlive the test";
    }

    std::size_t before_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new LiveObjectCheck); // which owns it
    return RUN_ALL_TESTS();
}
