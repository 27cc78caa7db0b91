#pragma once

#include "automation/members.h"
#include "frame/report.h"

namespace tarncom32::frame {

/// The base of a class with members that report their failures and write by-reference parameters: `member::reporting`
/// in their lines of the table. Where a caller's variable does not take what such a member wrote, that is reported too,
/// and the caller gets the rest.
template <class C>
class Reporting : public automation::Described<C> {
protected:
    explicit Reporting(platform::Platform& platform) : platform_(platform) {}

    bool reportFailure(const automation::MemberInfo& member, const automation::Error& error) override {
        const CurrentErrorScope scope(error);
        reportError(platform_.messageBox, C::kClassName, member.name);
        return true;
    }

    platform::Platform& platform_;
};

} // namespace tarncom32::frame
