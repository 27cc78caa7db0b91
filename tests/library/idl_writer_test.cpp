#include "automation/members.h"
#include "idl/idl_writer.h"
#include "support/error_of.h"

#include <gmock/gmock.h>
#include <sstream>
#include <stdexcept>

namespace tarncom32::idl {
namespace {

using namespace automation;

/// A member with a parameter of each type that may be left out.
class Optional : public Object {
public:
    void text(StringView) {}
    void number(std::int32_t) {}
    void flag(Boolean) {}
    void value(const Variant&) {}
    void fraction(double) {}
};

std::string described(MemberInfo member) {
    const ClassInfo info(u"Optional", u"", {}, {}, {std::move(member)});
    frame::PublishedLibrary library{u"Test", u"", {}};
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
    EXPECT_THAT(described(line<&Optional::text>(u"a\"b")), HasSubstr("defaultvalue(\"a\\\"b\")] BSTR x"));
    EXPECT_THAT(described(line<&Optional::number>(-5)), HasSubstr("defaultvalue(-5)] long x"));
    EXPECT_THAT(described(line<&Optional::flag>(Boolean(true))), HasSubstr("defaultvalue(-1)] VARIANT_BOOL x"));
    EXPECT_THAT(described(line<&Optional::number>(kMissing)), HasSubstr("defaultvalue(0)] long x"));
    EXPECT_THAT(described(line<&Optional::value>(kMissing)), HasSubstr("[in, optional] VARIANT x"));
    EXPECT_THROW(described(line<&Optional::fraction>(0.1)), std::logic_error) << "digits would be lost";
    EXPECT_THROW(described(line<&Optional::value>(0.1)), std::logic_error);
}

} // namespace
} // namespace tarncom32::idl
