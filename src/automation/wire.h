#pragma once

// The dual interfaces' own calling form, on Windows only. Each line of a member table has a thunk, instantiated from
// the member pointer, that stands in the vtable of the class's interface:
//
//     HRESULT __stdcall (this, arguments in their wire types..., wire type of the result*)
//
// A thunk turns wire arguments into those of the C++ member, calls it, and turns by-reference parameters and the result
// back. Texts are BSTRs, flags all 16 bits of a VARIANT_BOOL, enumerations 32-bit numbers, objects IDispatch or the
// class's own interface (the same pointer), arrays SAFEARRAYs by reference. Every by-reference parameter is in/out:
// what it held is freed when it is replaced.
//
// This layer knows no header of the system: it lays the types out itself, and `Conversions`, which the COM server
// provides, does what needs the system.

#include "automation/arguments.h"
#include "automation/member_traits.h"

namespace tarncom32::automation::wire {

using Result = std::int32_t; ///< an HRESULT
inline constexpr Result kSuccess = 0;
inline constexpr Result kPointer = static_cast<Result>(0x80004003); ///< E_POINTER

using Text = char16_t*;  ///< a BSTR; null is the empty text
using Interface = void*; ///< an interface pointer
using ArrayPtr = void*;  ///< a SAFEARRAY*
struct Value {           ///< a VARIANT
    std::uint16_t type = 0;
    std::uint16_t reserved[3]{};
    union {
        long long number = 0;
        void* pointers[2];
    };
};

/// What COM callers hold of one of our objects: the first pointer is that of the interface's vtable.
struct Face {
    const void* const* vtable;
    Object* object;
    const ClassInfo* info;
    void* owner;                  ///< the exporter's
    std::uint32_t references = 0; ///< callers' and, by `Held`, calls' under way; only touched on the object's thread
};

/// What needs the system. The `noexcept` members leave an empty value where memory runs out.
class Conversions {
public:
    virtual Text text(StringView text) const noexcept = 0;
    virtual void freeText(Text text) const noexcept = 0;
    /// Follows references. Raises 13 and 458 for what cannot be a `Variant`.
    virtual Variant value(const Value& value) const = 0;
    /// Gives a VARIANT that holds nothing yet its first value.
    virtual void initialise(Value& target, Variant&& value) const noexcept = 0;
    /// Replaces what a caller's VARIANT holds or refers to.
    virtual void assign(Value& target, Variant&& value) const noexcept = 0;
    virtual ObjectRef object(Interface pointer) const = 0;
    /// A counted pointer; null for Nothing.
    virtual Interface pointer(const ObjectRef& object) const noexcept = 0;
    virtual void release(Interface pointer) const noexcept = 0;
    /// Ends a face whose last reference has gone.
    virtual void destroy(Face& face) const noexcept = 0;
    virtual Array array(ArrayPtr array, VariantType element) const = 0;
    /// Puts `array` into the caller's: into the same memory where size and type agree, else into a new one.
    virtual void assign(ArrayPtr& target, const Array& array) const noexcept = 0;
    virtual Interface enumerator(std::unique_ptr<Enumerator> walk) const = 0;
    /// Called while an exception is handled: makes it the thread's error information; its HRESULT.
    virtual Result fail(const ClassInfo& info) const noexcept = 0;
    /// The same for an HRESULT.
    virtual Result fail(const ClassInfo& info, Result result) const noexcept = 0;

protected:
    ~Conversions() = default;
};

/// Set once, when the COM server's module is loaded.
inline const Conversions* conversions = nullptr;

/// Keeps a face and its object through a call, in which the caller may let go of them.
class Held {
public:
    explicit Held(Face& face) noexcept : face_(face) { ++face.references; }
    Held(const Held&) = delete;
    ~Held() {
        if (--face_.references == 0) conversions->destroy(face_);
    }

private:
    Face& face_;
};

inline StringView view(Text text) {
    // A BSTR's length in bytes stands in front of its first character.
    return text ? StringView(text, reinterpret_cast<const std::uint32_t*>(text)[-1] / sizeof(char16_t)) : StringView();
}

/// A type on the wire and the way there and back; `free` drops what a caller's variable held.
template <class T>
struct Wire {
    using Type = T;
    static T read(Type wire) { return wire; }
    static Type write(T value) { return value; }
    static void free(Type) {}
};
template <class E>
requires std::is_enum_v<E>
struct Wire<E> {
    using Type = std::int32_t;
    static E read(Type wire) { return static_cast<E>(wire); }
    static Type write(E value) { return static_cast<Type>(value); }
    static void free(Type) {}
};
template <>
struct Wire<Boolean> {
    using Type = std::int16_t;
    static Boolean read(Type wire) { return Boolean::fromBits(wire); }
    static Type write(Boolean value) { return value.value; }
    static void free(Type) {}
};
template <>
struct Wire<Date> {
    using Type = double;
    static Date read(Type wire) { return {wire}; }
    static Type write(Date value) { return value.days; }
    static void free(Type) {}
};
template <>
struct Wire<Currency> {
    using Type = long long;
    static Currency read(Type wire) { return {wire}; }
    static Type write(Currency value) { return value.tenThousandths; }
    static void free(Type) {}
};
template <>
struct Wire<String> {
    using Type = Text;
    static String read(Type wire) { return String(view(wire)); }
    static Type write(const String& value) { return conversions->text(value); }
    static void free(Type wire) { conversions->freeText(wire); }
};
template <>
struct Wire<Variant> {
    using Type = Value;
    static Variant read(const Type& wire) { return conversions->value(wire); }
    static Type write(Variant value) {
        Value wire;
        conversions->initialise(wire, std::move(value));
        return wire;
    }
};
template <class C>
struct Wire<Ref<C>> {
    using Type = Interface;
    static Ref<C> read(Type wire) {
        if constexpr (std::is_same_v<C, Object>)
            return conversions->object(wire);
        else
            return detail::fromVariant<Ref<C>>(Variant(conversions->object(wire)));
    }
    static Type write(const Ref<C>& value) { return conversions->pointer(value); }
    static void free(Type wire) { conversions->release(wire); }
};
template <>
struct Wire<Array> {
    using Type = ArrayPtr;
    static Type write(const Array& value) {
        ArrayPtr wire = nullptr;
        conversions->assign(wire, value);
        return wire;
    }
};
template <>
struct Wire<std::unique_ptr<Enumerator>> {
    using Type = Interface;
    static Type write(std::unique_ptr<Enumerator> walk) { return conversions->enumerator(std::move(walk)); }
};

/// One argument for the time of a call. By value:
template <class P>
class Argument {
public:
    using Type = typename Wire<P>::Type;
    static bool isNull(const Type&) { return false; }
    Argument(const ParameterInfo& parameter, const Type& wire) : value_(Wire<P>::read(wire)) {
        if constexpr (std::is_same_v<P, Variant>) value_ = detail::argumentOrDefault(parameter, &value_);
    }
    const P& get() const { return value_; }

private:
    P value_;
};
template <class P>
class Argument<const P&> : public Argument<P> {
    using Argument<P>::Argument;
};

/// Text that the member only reads: the caller's own.
template <>
class Argument<StringView> {
public:
    using Type = Text;
    static bool isNull(Text) { return false; }
    Argument(const ParameterInfo&, Text wire) : view_(view(wire)) {}
    StringView get() const { return view_; }

private:
    StringView view_;
};

/// By reference. The caller's variable is written when the call is over, also when it failed.
template <class T>
class Argument<T&> {
public:
    using Type = typename Wire<T>::Type*;
    static bool isNull(Type target) { return !target; }
    Argument(const ParameterInfo&, Type target) : target_(target), value_(Wire<T>::read(*target)) {}
    Argument(const Argument&) = delete;
    ~Argument() {
        const auto old = *target_;
        *target_ = Wire<T>::write(std::move(value_));
        Wire<T>::free(old);
    }
    T& get() { return value_; }

private:
    Type target_;
    T value_;
};
/// An object stays the caller's own pointer where it does not change: that may be another interface of the object.
template <class C>
class Argument<Ref<C>&> {
public:
    using Type = Interface*;
    static bool isNull(Type target) { return !target; }
    Argument(const ParameterInfo&, Type target)
        : target_(target), before_(Wire<Ref<C>>::read(*target)), value_(before_) {}
    Argument(const Argument&) = delete;
    ~Argument() {
        if (value_ == before_) return;
        const auto old = *target_;
        *target_ = Wire<Ref<C>>::write(value_);
        Wire<Ref<C>>::free(old);
    }
    Ref<C>& get() { return value_; }

private:
    Type target_;
    Ref<C> before_;
    Ref<C> value_;
};
template <>
class Argument<Variant&> {
public:
    using Type = Value*;
    static bool isNull(Type target) { return !target; }
    Argument(const ParameterInfo& parameter, Type target) : value_(conversions->value(*target)) {
        if (value_.isMissing())
            value_ = detail::argumentOrDefault(parameter, nullptr);
        else
            target_ = target;
    }
    Argument(const Argument&) = delete;
    ~Argument() {
        if (target_) conversions->assign(*target_, std::move(value_));
    }
    Variant& get() { return value_; }

private:
    Type target_ = nullptr;
    Variant value_;
};

/// By reference though the member only reads it.
template <class P>
struct ReadByReference;
template <class P>
class Argument<ReadByReference<P>> : public Argument<P> {
public:
    using Type = typename Argument<P>::Type*;
    static bool isNull(Type target) { return !target; }
    Argument(const ParameterInfo& parameter, Type target) : Argument<P>(parameter, *target) {}
};

/// An array: always by reference. The caller's own is filled unless the member only reads it.
template <VariantType Element>
class Argument<ArrayRef<Element>> {
public:
    using Type = ArrayPtr*;
    static bool isNull(Type target) { return !target; }
    Argument(const ParameterInfo& parameter, Type target)
        : target_(parameter.isByReference() ? target : nullptr), array_(conversions->array(*target, Element)) {}
    Argument(const Argument&) = delete;
    ~Argument() {
        if (target_) conversions->assign(*target_, array_);
    }
    ArrayRef<Element> get() { return array_; }

private:
    Type target_;
    Array array_;
};

/// The arguments of a call, made from the first to the last.
template <class Indices, class... P>
class Pack;
template <std::size_t I, class P>
struct Leaf {
    Argument<P> argument;
};
template <std::size_t... I, class... P>
class Pack<std::index_sequence<I...>, P...> : Leaf<I, P>... {
public:
    Pack([[maybe_unused]] const std::vector<ParameterInfo>& parameters, const typename Argument<P>::Type&... wires)
        : Leaf<I, P>{Argument<P>(parameters[I], wires)}... {}

    template <class F>
    decltype(auto) apply(F&& call) {
        return std::forward<F>(call)(static_cast<Leaf<I, P>&>(*this).argument.get()...);
    }
};

/// The published parameters of the member behind a thunk: their defaults and directions.
template <auto Member>
inline std::vector<ParameterInfo> parametersOf{};

/// The fence between a thunk's body and the caller.
template <class Body>
Result guarded(Face* self, Body&& body) {
    const Held held(*self);
    try {
        body();
        return kSuccess;
    } catch (...) {
        return conversions->fail(*self->info);
    }
}

template <auto Member, class C, class R, class... P>
struct Thunk {
    static Result __stdcall call(Face* self, typename Argument<P>::Type... arguments, typename Wire<R>::Type* result) {
        if (!result || (Argument<P>::isNull(arguments) || ...)) return conversions->fail(*self->info, kPointer);
        *result = {};
        return guarded(self, [&] {
            Pack<std::index_sequence_for<P...>, P...> pack(parametersOf<Member>, arguments...);
            *result = Wire<R>::write(pack.apply([&](auto&&... values) {
                return (static_cast<C*>(self->object)->*Member)(std::forward<decltype(values)>(values)...);
            }));
        });
    }
};
template <auto Member, class C, class... P>
struct Thunk<Member, C, void, P...> {
    static Result __stdcall call(Face* self, typename Argument<P>::Type... arguments) {
        if ((Argument<P>::isNull(arguments) || ...)) return conversions->fail(*self->info, kPointer);
        return guarded(self, [&] {
            Pack<std::index_sequence_for<P...>, P...> pack(parametersOf<Member>, arguments...);
            pack.apply([&](auto&&... values) {
                (static_cast<C*>(self->object)->*Member)(std::forward<decltype(values)>(values)...);
            });
        });
    }
};

template <class P, bool ByReference>
using Passed = std::conditional_t<ByReference, ReadByReference<P>, P>;

template <auto Member, std::uint32_t ByReference, class C, class R, class... P, std::size_t... I>
const void* thunkOf(std::type_identity<std::tuple<P...>>, std::index_sequence<I...>) {
    using Made = Thunk<Member, C, std::remove_cvref_t<R>, Passed<P, (ByReference >> I & 1) != 0>...>;
    return reinterpret_cast<const void*>(&Made::call);
}

/// The vtable entry of a member with these published parameters; `ByReference` has a bit set for each that is passed by
/// reference though the member only reads it.
template <auto Member, std::uint32_t ByReference>
const void* entryOf(const std::vector<ParameterInfo>& parameters) {
    using Traits = detail::MemberTraits<decltype(Member)>;
    parametersOf<Member> = parameters;
    return thunkOf<Member, ByReference, typename Traits::Class, typename Traits::Result>(
        std::type_identity<typename Traits::Parameters>{}, std::make_index_sequence<Traits::kCount>{});
}

} // namespace tarncom32::automation::wire
