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
// Types come from the member pointers: texts that a member only reads are `StringView`, by-reference parameters are
// `String&`, `Variant&`, `ObjectRef&` and the like, arrays `ArrayRef<...>`; objects are `ObjectRef` or `Ref<Class>`.

#include "automation/arguments.h"
#include "automation/member_traits.h"
#ifdef _WIN32
#include "automation/wire.h"
#endif

#include <stdexcept>

namespace tarncom32::automation {

namespace detail {

/// `const String&` and the like arrive as values; only `const Variant&` is worth a reference.
template <class P>
struct SlotOf {
    using type = Slot<std::conditional_t<std::is_lvalue_reference_v<P> && !std::is_same_v<P, const Variant&> &&
                                             std::is_const_v<std::remove_reference_t<P>>,
                                         std::remove_cvref_t<P>, P>>;
};

/// The slots of all parameters, made from the first to the last.
template <class Indices, class... S>
class SlotPack;
template <std::size_t I, class S>
struct SlotLeaf {
    S slot;
};

/// The slot of the argument at `index`; a failure says which argument it was.
template <class S>
S makeSlot(const ParameterInfo& parameter, std::span<Variant> arguments, std::size_t index) {
    try {
        return S(parameter, index < arguments.size() ? &arguments[index] : nullptr);
    } catch (const Error& error) {
        throw ArgumentError(error, index);
    }
}

template <std::size_t... I, class... S>
class SlotPack<std::index_sequence<I...>, S...> : SlotLeaf<I, S>... {
public:
    SlotPack([[maybe_unused]] const MemberInfo& member, [[maybe_unused]] std::span<Variant> arguments)
        : SlotLeaf<I, S>{makeSlot<S>(member.parameters[I], arguments, I)}... {}

    template <class F>
    decltype(auto) apply(F&& call) {
        return std::forward<F>(call)(static_cast<SlotLeaf<I, S>&>(*this).slot.get()...);
    }
};

template <class Parameters>
struct PackOf;
template <class... P>
struct PackOf<std::tuple<P...>> {
    using type = SlotPack<std::index_sequence_for<P...>, typename SlotOf<P>::type...>;
};

/// The late-bound form of a member: arguments in, the member's own call, result out.
template <auto Member>
Variant invokeMember(Object& self, const MemberInfo& member, std::span<Variant> arguments) {
    using Traits = MemberTraits<decltype(Member)>;
    if (arguments.size() > Traits::kCount) throw Error(errors::WrongArgumentCount);
    auto& object = static_cast<typename Traits::Class&>(self);
    typename PackOf<typename Traits::Parameters>::type slots(member, arguments);
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

/// The entry of a member in the vtable of its class's interface.
template <auto Member, std::uint32_t ByReference>
const void* vtableEntryOf([[maybe_unused]] const std::vector<ParameterInfo>& parameters) {
#ifdef _WIN32
    return wire::entryOf<Member, ByReference>(parameters);
#else
    return nullptr;
#endif
}

template <auto Member, std::uint32_t ByReference>
MemberInfo makeMember(MemberKind kind, std::int32_t dispid, StringView name, std::vector<ParameterInfo> parameters,
                      StringView help, Visibility visibility) {
    using Traits = MemberTraits<decltype(Member)>;
    const std::vector<Type> types = Traits::types();
    if (types.size() != parameters.size())
        throw std::logic_error(toUtf8(name) + ": the table and the C++ member differ in the number of parameters");
    for (std::size_t i = 0; i < types.size(); ++i) {
        parameters[i].type = types[i];
        parameters[i].readByReference = (byReferenceBits<Member, ByReference> >> i & 1) != 0;
        if (!types[i].isArray && parameters[i].isByReference() != Traits::kWritable[i])
            throw std::logic_error(toUtf8(name) + ": direction and C++ type of a parameter do not agree");
    }
    const void* entry = vtableEntryOf<Member, byReferenceBits<Member, ByReference>>(parameters);
    return {name,
            dispid,
            kind,
            help,
            visibility,
            kTypeOf<typename Traits::Result>,
            std::move(parameters),
            &invokeMember<Member>,
            nullptr,
            entry};
}

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
    member.vtableEntry = detail::vtableEntryOf<Member, 0>({});
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
        const ClassInfo& info = C::describe();
        if (const MemberInfo* member = info.find(name, access); member && member->invoke)
            return member->invoke(*this, *member, arguments);
        throw noSuchMember(info, name);
    }

    std::unique_ptr<Enumerator> enumerate() override {
        if (const MemberInfo* member = C::describe().find(kDispidNewEnum, Access::Get)) return member->enumerate(*this);
        return Object::enumerate();
    }
};

} // namespace tarncom32::automation
