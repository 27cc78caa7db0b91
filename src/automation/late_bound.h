#pragma once

#include "automation/convert.h"

#include <utility>

namespace tarncom32::automation {

/// A value on whose members a chain of late-bound accesses goes on, so that the chain reads as a script's does:
///
///     const LateBound documents = LateBound(application).get(u"Documents");
///     documents.call(u"Open", name);
///     const std::int32_t pages = toLong(documents.get(u"Item", 1).get(u"Pages").get(u"Count"));
///
/// It converts to `Variant` by itself, so that it is an argument to other calls and to the conversions of convert.h.
/// Members raise what the object's member raises, 91 on Nothing, and 13 on a value that is no object reference.
class LateBound {
public:
    /// An object reference, or what a member gave.
    explicit LateBound(Variant value) noexcept : value_(std::move(value)) {}

    /// Reads a property; `args` are its index.
    template <class... Args>
    LateBound get(const MemberName& name, Args&&... args) const {
        return LateBound(deref(object()).get(name, std::forward<Args>(args)...));
    }
    /// Calls a method.
    template <class... Args>
    LateBound call(const MemberName& name, Args&&... args) const {
        return LateBound(deref(object()).call(name, std::forward<Args>(args)...));
    }
    /// Assigns the last argument to a property; the others are its index.
    template <class... Args>
    void put(const MemberName& name, Args&&... args) const {
        deref(object()).put(name, std::forward<Args>(args)...);
    }

    /// The object; Nothing for Empty as well. Raises 13 for any other value.
    ObjectRef object() const { return toObject(value_); }
    operator const Variant&() const noexcept { return value_; }

private:
    Variant value_;
};

} // namespace tarncom32::automation
