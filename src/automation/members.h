#pragma once

// Member tables. A public class is an ordinary C++ class that derives from `Described<Itself>` and has
//
//     static constexpr StringView kClassName = u"Greeter";
//     static const ClassInfo& describe();
//
// whose body is the table, one line a member:
//
//     static const ClassInfo info(kClassName, u"Greets people.", "..."_guid, "..."_guid, {
//         member::method<&Greeter::greet>(1, u"Greet", {in(u"sName"), optional(in(u"bLoud"), Boolean(false))},
//         u"Returns ..."), member::get<&Greeter::language>(2, u"Language", {}, u"The language of the greeting."),
//         member::let<&Greeter::setLanguage>(2, u"Language", {in(u"sLanguage")}, u"The language of the greeting."),
//     });
//     return info;
//
// Types come from the member pointers: texts that a member only reads are `StringView`, or `const String&` where it
// calls other objects meanwhile, which may give the caller's variable another text; by-reference parameters are
// `String&`, `Variant&`, `ObjectRef&` and the like, arrays `ArrayRef<...>`, records the structure by reference; objects
// are `ObjectRef` or `Ref<Class>`. What a member does about a by-reference variable that does not take what it wrote is
// said in front of its line: `member::reporting(member::method<...>(...))`, `member::silent(...)`; others raise.

#include "automation/arguments.h"
#include "automation/member_traits.h"
#ifdef _WIN32
#include "automation/vtable.h"
#endif

namespace tarncom32::automation {

namespace detail {

/// `const String&` and the like arrive as values; only `const Variant&` is worth a reference.
template <class P>
struct SlotOf {
    using type = Slot<std::conditional_t<std::is_lvalue_reference_v<P> && !std::is_same_v<P, const Variant&> &&
                                             std::is_const_v<std::remove_reference_t<P>>,
                                         std::remove_cvref_t<P>, P>>;
};

/// The slot of the argument at `index`; a failure says which argument it was.
template <class S>
S makeSlot(const ParameterInfo& parameter, std::span<LateArgument> arguments, std::size_t index) {
    LateArgument missing;
    try {
        return S(parameter, index < arguments.size() ? arguments[index] : missing);
    } catch (const Error& error) {
        throw ArgumentError(error, index);
    }
}

template <class Parameters>
struct PackOf;
template <class... P>
struct PackOf<std::tuple<P...>> {
    using type = Pack<std::index_sequence_for<P...>, typename SlotOf<P>::type...>;
};

/// The late-bound form of a member: arguments in, the member's own call, result out.
template <auto Member>
Variant invokeMember(Object& self, const MemberInfo& member, [[maybe_unused]] std::span<LateArgument> arguments) {
    using Traits = MemberTraits<decltype(Member)>;
    if (arguments.size() > Traits::kCount) throw Error(errors::WrongArgumentCount);
    auto& object = static_cast<typename Traits::Class&>(self);
    typename PackOf<typename Traits::Parameters>::type slots(
        [&]<std::size_t I, class S>() -> S { return makeSlot<S>(member.parameters[I], arguments, I); });
    return slots.apply([&](auto&&... values) -> Variant {
        try {
            if constexpr (std::is_void_v<typename Traits::Result>) {
                (object.*Member)(std::forward<decltype(values)>(values)...);
                return {};
            } else {
                return Variant((object.*Member)(std::forward<decltype(values)>(values)...));
            }
        } catch (const ArgumentError& error) {
            throw Error(error); // of a call that the member made: these arguments are not to blame
        }
    });
}

/// Fills in the types of the parameters of `name` and checks their directions; `writable` says of each C++ parameter
/// whether it can be written to. Throws `std::logic_error` where the table and the C++ side do not agree.
void completeParameters(StringView name, std::vector<ParameterInfo>& parameters, std::span<const Type> types,
                        std::span<const bool> writable, std::uint32_t readByReference);

template <auto Member, std::uint32_t ByReference>
MemberInfo makeMember(MemberKind kind, std::int32_t dispid, StringView name, std::vector<ParameterInfo> parameters,
                      StringView help, Visibility visibility) {
    using Traits = MemberTraits<decltype(Member)>;
    static_assert(Traits::kCount <= kMostParameters);
    constexpr std::uint32_t kBits = byReferenceBits<Member, ByReference>;
    completeParameters(name, parameters, Traits::kTypes, Traits::kWritable, kBits);
    MemberInfo member{name,
                      dispid,
                      kind,
                      help,
                      visibility,
                      kTypeOf<typename Traits::Result>,
                      std::move(parameters),
                      &invokeMember<Member>};
    member.published = &published<Member>;
#ifdef _WIN32
    member.vtableEntry = vtable::entryOf<Member, kBits>();
#endif
    return member;
}

/// Calls the member of that name; raises 438 when there is none.
Variant invokeByName(Object& self, const ClassInfo& info, const MemberName& name, Access access,
                     std::span<Variant> arguments);

template <auto Member>
std::unique_ptr<Enumerator> enumerateMember(Object& self) {
    return (static_cast<typename MemberTraits<decltype(Member)>::Class&>(self).*Member)();
}

} // namespace detail

/// The lines of a member table.
namespace member {

/// A method, or one accessor of a property. `ByReference` names the parameters that the member only reads and that
/// compiled callers yet pass by reference: `member::method<&Sorter::sort, member::byReference(1, 2)>(...)`.
template <auto Member, std::uint32_t ByReference = 0>
MemberInfo method(std::int32_t dispid, StringView name, std::vector<ParameterInfo> parameters, StringView help,
                  Visibility visibility = Visibility::Normal) {
    return detail::makeMember<Member, ByReference>(MemberKind::Method, dispid, name, std::move(parameters), help,
                                                   visibility);
}
template <auto Member, std::uint32_t ByReference = 0>
MemberInfo get(std::int32_t dispid, StringView name, std::vector<ParameterInfo> parameters, StringView help,
               Visibility visibility = Visibility::Normal) {
    return detail::makeMember<Member, ByReference>(MemberKind::Get, dispid, name, std::move(parameters), help,
                                                   visibility);
}
template <auto Member, std::uint32_t ByReference = 0>
MemberInfo let(std::int32_t dispid, StringView name, std::vector<ParameterInfo> parameters, StringView help,
               Visibility visibility = Visibility::Normal) {
    return detail::makeMember<Member, ByReference>(MemberKind::Let, dispid, name, std::move(parameters), help,
                                                   visibility);
}
template <auto Member, std::uint32_t ByReference = 0>
MemberInfo set(std::int32_t dispid, StringView name, std::vector<ParameterInfo> parameters, StringView help,
               Visibility visibility = Visibility::Normal) {
    return detail::makeMember<Member, ByReference>(MemberKind::Set, dispid, name, std::move(parameters), help,
                                                   visibility);
}
/// The line of a member that reports its failures and stops.
inline MemberInfo reporting(MemberInfo member) {
    member.failureStyle = FailureStyle::Report;
    return member;
}
/// The line of a member that skips what fails.
inline MemberInfo silent(MemberInfo member) {
    member.failureStyle = FailureStyle::Silent;
    return member;
}
/// The line of the member that starts `For Each`: `Member` returns `std::unique_ptr<Enumerator>`. Hosts know it by its
/// number.
template <auto Member>
MemberInfo newEnum(StringView name = u"_NewEnum") {
    MemberInfo member{name,
                      kDispidNewEnum,
                      MemberKind::Get,
                      u"Walks the items from the first to the last.",
                      Visibility::Restricted,
                      kTypeOf<std::unique_ptr<Enumerator>>};
    member.enumerate = &detail::enumerateMember<Member>;
#ifdef _WIN32
    member.vtableEntry = vtable::entryOf<Member, 0>();
#endif
    return member;
}

} // namespace member

/// Late binding out of the member table of `C`.
template <class C>
class Described : public Object {
public:
    String typeName() const override { return String(C::kClassName); }
    const ClassInfo* classInfo() const override { return &C::describe(); }
    bool hasMember(const MemberName& name) override { return C::describe().findAny(name) != nullptr; }

    Variant invoke(const MemberName& name, Access access, std::span<Variant> arguments, std::uint32_t = 0) override {
        return detail::invokeByName(*this, C::describe(), name, access, arguments);
    }

    std::unique_ptr<Enumerator> enumerate() override {
        if (const MemberInfo* member = C::describe().find(kDispidNewEnum, Access::Get)) return member->enumerate(*this);
        return Object::enumerate();
    }
};

} // namespace tarncom32::automation
