#pragma once

// The late-bound calls of `Object` that take C++ values: apart from object.h because they need the whole `Variant`.

#include "automation/error.h"
#include "automation/object.h"
#include "automation/variant.h"

#include <array>
#include <utility>

namespace tarncom32::automation {

template <class... Args>
Variant Object::call(const MemberName& name, Args&&... args) {
    std::array<Variant, sizeof...(Args)> arguments{Variant(std::forward<Args>(args))...};
    return invoke(name, Access::MethodOrGet, arguments);
}

template <class... Args>
Variant Object::get(const MemberName& name, Args&&... args) {
    std::array<Variant, sizeof...(Args)> arguments{Variant(std::forward<Args>(args))...};
    return invoke(name, Access::MethodOrGet, arguments);
}

template <class... Args>
void Object::put(const MemberName& name, Args&&... args) {
    std::array<Variant, sizeof...(Args)> arguments{Variant(std::forward<Args>(args))...};
    invoke(name, Access::Let, arguments);
}

template <class... Args>
void Object::putReference(const MemberName& name, Args&&... args) {
    std::array<Variant, sizeof...(Args)> arguments{Variant(std::forward<Args>(args))...};
    invoke(name, Access::Set, arguments);
}

template <class T>
T& deref(const Ref<T>& reference) {
    if (!reference) throw Error(errors::ObjectNotSet);
    return *reference;
}

template <class T>
T&& deref(Ref<T>&& reference) {
    return static_cast<T&&>(deref(std::as_const(reference)));
}

} // namespace tarncom32::automation
