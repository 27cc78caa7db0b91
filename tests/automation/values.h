#pragma once

#include "automation/error.h"
#include "automation/object.h"
#include "automation/string.h"
#include "support/error_of.h"

#include <ostream>
#include <string>

namespace tarncom32::automation {

using tests::errorOf;

/// An object whose default member gives `value`; it has no other member.
class ObjectWithDefault : public Object {
public:
    explicit ObjectWithDefault(Variant value) : value_(std::move(value)) {}
    String typeName() const override { return u"ObjectWithDefault"; }
    Variant invoke(const MemberName& name, Access access, std::span<Variant>, std::uint32_t) override {
        if (!name.text().empty() || access != Access::Get) throw Error(errors::NoSuchMember);
        return value_;
    }
    bool hasMember(const MemberName& name) override { return name.text().empty(); }

private:
    Variant value_;
};

inline constexpr Decimal kLargestDecimal{0xFFFFFFFF, 0xFFFFFFFFFFFFFFFF, 0, false};

} // namespace tarncom32::automation
