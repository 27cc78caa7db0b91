#include "automation/members.h"
#include "idl/idl_writer.h"
#include "support/error_of.h"

#include <gmock/gmock.h>
#include <sstream>
#include <stdexcept>

namespace tarncom32::idl {
namespace {

using namespace automation;

/// Members with a parameter each.
class Taker : public Object {
public:
    void text(StringView) {}
    void number(std::int32_t) {}
    void flag(Boolean) {}
    void value(const Variant&) {}
    void fraction(double) {}
    void record(frame::PushParamThunk&) {}
};

std::string described(MemberInfo member, std::span<const RecordInfo> records = {}) {
    const ClassInfo info(u"Taker", u"", {}, {}, {std::move(member)});
    frame::PublishedLibrary library{u"Test", u"", {}, {}, records};
    library.classes.push_back({&info});
    std::ostringstream out;
    write(out, library);
    return out.str();
}

template <auto Member>
MemberInfo line(const Variant& defaultValue) {
    return member::method<Member>(1, u"Member", {optional(in(u"x"), defaultValue)}, u"");
}

TEST(IdlWriter, WritesTheDefaultsThatTheCompilerKnowsAndRefusesTheOthers) {
    using testing::HasSubstr;
    EXPECT_THAT(described(line<&Taker::text>(u"a\"b")), HasSubstr("defaultvalue(\"a\\\"b\")] BSTR x"));
    EXPECT_THAT(described(line<&Taker::number>(-5)), HasSubstr("defaultvalue(-5)] long x"));
    EXPECT_THAT(described(line<&Taker::flag>(Boolean(true))), HasSubstr("defaultvalue(-1)] VARIANT_BOOL x"));
    EXPECT_THAT(described(line<&Taker::number>(kMissing)), HasSubstr("defaultvalue(0)] long x"));
    EXPECT_THAT(described(line<&Taker::value>(kMissing)), HasSubstr("[in, optional] VARIANT x"));
    EXPECT_THROW(described(line<&Taker::fraction>(0.1)), std::logic_error) << "digits would be lost";
    EXPECT_THROW(described(line<&Taker::value>(0.1)), std::logic_error);
}

TEST(IdlWriter, WritesRecordsThatTheLibraryPublishesAndRefusesTheOthers) {
    const auto member = [] { return member::method<&Taker::record>(1, u"Member", {out(u"x")}, u""); };
    EXPECT_THAT(described(member(), frame::records()), testing::HasSubstr("[in, out] PushParamThunk* x"));
    EXPECT_THROW(described(member()), std::logic_error);
}

} // namespace
} // namespace tarncom32::idl
