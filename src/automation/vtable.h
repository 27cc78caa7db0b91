#pragma once

// The dual interfaces' own calling form, on Windows only. Each line of a member table has a thunk, instantiated from
// the member pointer, that stands in the vtable of the class's interface:
//
//     HRESULT __stdcall (this, arguments as the interface declares them..., the result's type*)
//
// A thunk turns its arguments into those of the C++ member, calls it, and turns by-reference parameters and the result
// back. Texts are BSTRs, flags all 16 bits of a VARIANT_BOOL, enumerations 32-bit numbers, objects IDispatch or the
// class's own interface (the same pointer), arrays SAFEARRAYs by reference, records a pointer to the caller's own.
// Every other by-reference parameter is in/out: what it held is freed when it is replaced. All that goes back is
// converted first and then handed over in steps that cannot fail, and what callers held before is let go of last.
//
// This layer knows no header of the system: it lays the types out itself, and `Marshaller`, which the COM server
// provides, does what needs the system.

#include "automation/arguments.h"
#include "automation/member_traits.h"

namespace tarncom32::automation::vtable {

using Result = std::int32_t; ///< an HRESULT
inline constexpr Result kSuccess = 0;
inline constexpr Result kPointer = static_cast<Result>(0x80004003); ///< E_POINTER

using Text = char16_t*;  ///< a BSTR; null is the empty text
using Interface = void*; ///< an interface pointer
using ArrayPtr = void*;  ///< a SAFEARRAY*
/// A VARIANT, which the system's functions write and read under its own declaration.
struct [[gnu::may_alias]] Value {
    std::uint16_t type = 0;
    std::uint16_t reserved[3]{};
    union {
        long long number = 0;
        void* pointers[2];
    };
};

/// What COM callers hold of one of our objects: the first pointer is that of the interface's vtable.
struct CallableWrapper {
    const void* const* vtable;
    Object* object;
    const ClassInfo* info;
    void* owner;                  ///< the exporter's
    std::uint32_t references = 0; ///< callers' and, by `Held`, calls' under way; only touched on the object's thread
};

/// A new value for a caller's VARIANT or SAFEARRAY pointer, converted already and waiting to be put there.
struct Assignment {
    enum class Kind : std::uint8_t {
        None,
        Whole,    ///< `place` is a VARIANT that takes all of `value`
        Contents, ///< `place` takes the first `size` bytes of what `value` holds
        Decimal,  ///< `place` is a DECIMAL and takes all of `value` but its type
        Elements, ///< `place` is a SAFEARRAY that takes the elements of the one in `value`
    };
    Kind kind = Kind::None;
    std::size_t size = 0;
    void* place = nullptr;
    Value value; ///< the new one and, once it has been put in place, the one from there

    Assignment() noexcept = default;
    Assignment(const Assignment&) = delete;
    ~Assignment();
};

/// What needs the system. What can fail throws: `Error` for what cannot be converted, `std::bad_alloc`.
class Marshaller {
public:
    virtual Text newText(StringView text) const = 0;
    virtual void freeText(Text text) const noexcept = 0;
    /// Follows references. Raises 13 and 458 for what cannot be a `Variant`.
    virtual Variant value(const Value& value) const = 0;
    virtual void initialise(Value& target, Variant&& value) const = 0;
    virtual void clear(Value& value) const noexcept = 0;
    virtual ObjectRef object(Interface pointer) const = 0;
    /// A counted pointer; null for Nothing.
    virtual Interface pointer(const ObjectRef& object) const = 0;
    virtual void release(Interface pointer) const noexcept = 0;
    /// One call, or one caller, fewer.
    virtual void release(CallableWrapper& wrapper) const noexcept = 0;
    virtual Array array(ArrayPtr array, VariantType element) const = 0;
    virtual ArrayPtr newArray(Array&& array) const = 0;
    virtual void free(ArrayPtr array) const noexcept = 0;
    virtual Interface enumerator(std::unique_ptr<Enumerator> items) const = 0;

    /// Prepares the replacement of what a caller's VARIANT holds or refers to, or of a caller's array.
    virtual void prepare(Assignment& assignment, Value& target, Variant&& value) const = 0;
    virtual void prepare(Assignment& assignment, ArrayPtr& target, Array&& array) const = 0;
    /// Exchanges the value with what is in its place.
    virtual void commit(Assignment& assignment) const noexcept = 0;

    /// Makes the error the thread's error information; its HRESULT.
    virtual Result fail(const ClassInfo& info, const Error& error) const noexcept = 0;

protected:
    ~Marshaller() = default;
};

/// Set once, when the COM server's module is loaded.
inline const Marshaller* marshaller = nullptr;

inline Assignment::~Assignment() {
    if (kind != Kind::None) marshaller->clear(value);
}

/// Keeps a wrapper and its object through a call, in which the caller may let go of them.
class Held {
public:
    explicit Held(CallableWrapper& wrapper) noexcept : wrapper_(wrapper) { ++wrapper.references; }
    Held(const Held&) = delete;
    ~Held() { marshaller->release(wrapper_); }

private:
    CallableWrapper& wrapper_;
};

inline StringView view(Text text) {
    // A BSTR's length in bytes stands in front of its first character.
    return text ? StringView(text, reinterpret_cast<const std::uint32_t*>(text)[-1] / sizeof(char16_t)) : StringView();
}

/// A type of the interface and the way there and back; `free` drops what a variable held.
template <class T>
struct Native {
    using Type = T;
    static T read(Type value) { return value; }
    static Type write(T value) { return value; }
    static void free(Type) {}
};
template <class E>
requires std::is_enum_v<E>
struct Native<E> {
    using Type = std::int32_t;
    static E read(Type value) { return static_cast<E>(value); }
    static Type write(E value) { return static_cast<Type>(value); }
    static void free(Type) {}
};
template <>
struct Native<Boolean> {
    using Type = std::int16_t;
    static Boolean read(Type value) { return Boolean::fromBits(value); }
    static Type write(Boolean value) { return value.value; }
    static void free(Type) {}
};
template <>
struct Native<Date> {
    using Type = double;
    static Date read(Type value) { return {value}; }
    static Type write(Date value) { return value.days; }
    static void free(Type) {}
};
template <>
struct Native<Currency> {
    using Type = long long;
    static Currency read(Type value) { return {value}; }
    static Type write(Currency value) { return value.tenThousandths; }
    static void free(Type) {}
};
template <>
struct Native<String> {
    using Type = Text;
    static String read(Type text) { return String(view(text)); }
    static Type write(const String& text) { return marshaller->newText(text); }
    static void free(Type text) { marshaller->freeText(text); }
};
template <>
struct Native<Variant> {
    using Type = Value;
    static Variant read(const Type& value) { return marshaller->value(value); }
    static Type write(Variant value) {
        Value written;
        marshaller->initialise(written, std::move(value));
        return written;
    }
    static void free(Type& value) { marshaller->clear(value); }
};
template <class C>
struct Native<Ref<C>> {
    using Type = Interface;
    static Ref<C> read(Type pointer) {
        if constexpr (std::is_same_v<C, Object>)
            return marshaller->object(pointer);
        else
            return detail::fromVariant<Ref<C>>(Variant(marshaller->object(pointer)));
    }
    static Type write(const Ref<C>& object) { return marshaller->pointer(object); }
    static void free(Type pointer) { marshaller->release(pointer); }
};
template <>
struct Native<Array> {
    using Type = ArrayPtr;
    static Type write(Array&& array) { return marshaller->newArray(std::move(array)); }
    static void free(Type array) { marshaller->free(array); }
};
template <>
struct Native<std::unique_ptr<Enumerator>> {
    using Type = Interface;
    static Type write(std::unique_ptr<Enumerator> items) { return marshaller->enumerator(std::move(items)); }
    static void free(Type pointer) { marshaller->release(pointer); }
};

/// One argument for the time of a call. By value:
template <class P>
class Argument {
public:
    using Type = typename Native<P>::Type;
    static constexpr bool kGoesBack = false;
    static bool isNull(const Type&) { return false; }
    Argument(const ParameterInfo& parameter, const Type& value) : value_(Native<P>::read(value)) {
        if constexpr (std::is_same_v<P, Variant>)
            if (value_.isMissing()) value_ = detail::defaultOf(parameter);
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
    static constexpr bool kGoesBack = false;
    static bool isNull(Text) { return false; }
    Argument(const ParameterInfo&, Text text) : view_(view(text)) {}
    StringView get() const { return view_; }

private:
    StringView view_;
};

/// By reference: the caller's variable is written when the call is over, also when it failed. An object that does not
/// change stays the caller's own pointer, which may be another interface of it.
template <class T>
class Argument<T&> {
public:
    using Type = typename Native<T>::Type*;
    static constexpr bool kGoesBack = true;
    static bool isNull(Type target) { return !target; }
    Argument(const ParameterInfo& parameter, Type target)
        : target_(target), value_(parameter.direction, true, [&] { return Native<T>::read(*target); }) {}
    Argument(const Argument&) = delete;
    ~Argument() { Native<T>::free(given_); }
    T& get() { return value_.value; }
    void prepare() {
        if (!value_.isWritten()) return;
        given_ = Native<T>::write(std::move(value_.value));
        isPrepared_ = true;
    }
    void commit() noexcept {
        if (isPrepared_) std::swap(*target_, given_);
    }

private:
    Type target_;
    detail::Written<T> value_;
    typename Native<T>::Type given_{}; ///< the new value and, once it has been put in place, the one from there
    bool isPrepared_ = false;
};
template <>
class Argument<Variant&> {
public:
    using Type = Value*;
    static constexpr bool kGoesBack = true;
    static bool isNull(Type target) { return !target; }
    Argument(const ParameterInfo& parameter, Type target) : value_(marshaller->value(*target)) {
        if (value_.isMissing())
            value_ = detail::defaultOf(parameter);
        else
            target_ = target;
    }
    Variant& get() { return value_; }
    void prepare() {
        if (target_) marshaller->prepare(assignment_, *target_, std::move(value_));
    }
    void commit() noexcept { marshaller->commit(assignment_); }

private:
    Type target_ = nullptr;
    Variant value_;
    Assignment assignment_;
};

/// A record: the caller's own, where it stands.
template <PublishedRecord R>
class Argument<R&> {
public:
    using Type = R*;
    static constexpr bool kGoesBack = false;
    static bool isNull(Type target) { return !target; }
    Argument(const ParameterInfo&, Type target) : target_(target) {}
    R& get() { return *target_; }

private:
    Type target_;
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

/// An array: always by reference. The caller's own is filled unless the member only reads it; what one that is only
/// written held before is not looked at.
template <VariantType Element>
class Argument<ArrayRef<Element>> {
public:
    using Type = ArrayPtr*;
    static constexpr bool kGoesBack = true;
    static bool isNull(Type target) { return !target; }
    Argument(const ParameterInfo& parameter, Type target)
        : target_(target), direction_(parameter.direction),
          array_(direction_ == Direction::Out ? Array(Element) : marshaller->array(*target, Element)) {}
    ArrayRef<Element> get() { return array_; }
    void prepare() {
        if (direction_ == Direction::In || (direction_ == Direction::Out && !array_.hasBounds())) return;
        marshaller->prepare(assignment_, *target_, std::move(array_));
    }
    void commit() noexcept { marshaller->commit(assignment_); }

private:
    Type target_;
    Direction direction_;
    Array array_;
    Assignment assignment_;
};

/// The result of a call until the caller gets it.
template <class R>
class Made {
public:
    Made() noexcept = default;
    Made(const Made&) = delete;
    ~Made() { Native<R>::free(value_); }
    void take(R&& value) { value_ = Native<R>::write(std::move(value)); }
    void give(typename Native<R>::Type* target) noexcept { *target = std::exchange(value_, {}); }

private:
    typename Native<R>::Type value_{};
};
template <>
class Made<void> {};

/// Converts what goes back to the caller, then hands it over. Of several failures the first is given.
template <class Arguments>
std::optional<Error> giveBack(Arguments& arguments) noexcept {
    std::optional<Error> failure;
    arguments.forEach([&]<class A>(A& argument) {
        if constexpr (A::kGoesBack) {
            try {
                argument.prepare();
            } catch (...) {
                if (!failure) failure = errorInFlight();
            }
        }
    });
    arguments.forEach([]<class A>(A& argument) {
        if constexpr (A::kGoesBack) argument.commit();
    });
    return failure;
}

/// Calls the member and keeps what it gives in `made`. Throws what the member throws, when by-reference arguments have
/// gone back as far as it wrote them.
template <auto Member, class C, class R, class Arguments>
void callMember(CallableWrapper& self, Arguments& arguments, [[maybe_unused]] Made<R>& made) {
    arguments.apply([&](auto&&... values) {
        auto& object = *static_cast<C*>(self.object);
        if constexpr (std::is_void_v<R>)
            (object.*Member)(std::forward<decltype(values)>(values)...);
        else
            made.take((object.*Member)(std::forward<decltype(values)>(values)...));
    });
}

/// The body of a thunk: what stands between a compiled caller and the member. `values` are the caller's arguments, and
/// `result` is where the caller wants what the member gives.
template <auto Member, class C, class R, class... P, class... Target>
Result enter(CallableWrapper& self, const std::tuple<const typename Argument<P>::Type&...>& values, Target... result) {
    using Arguments = detail::Pack<std::index_sequence_for<P...>, Argument<P>...>;
    const Held held(self);
    try {
        Arguments arguments([&]<std::size_t I, class A>() -> A {
            return A(detail::published<Member>->parameters[I], std::get<I>(values));
        });
        Made<R> made;
        if constexpr ((Argument<P>::kGoesBack || ...)) {
            try {
                callMember<Member, C>(self, arguments, made);
            } catch (...) {
                const Error failure = errorInFlight();
                giveBack(arguments);
                return marshaller->fail(*self.info, failure);
            }
            const std::optional<Error> failure = giveBack(arguments);
            if (failure && !self.object->settlesFailure(*detail::published<Member>, *failure))
                return marshaller->fail(*self.info, *failure);
        } else {
            callMember<Member, C>(self, arguments, made);
        }
        (made.give(result), ...);
        return kSuccess;
    } catch (...) {
        return marshaller->fail(*self.info, errorInFlight());
    }
}

template <auto Member, class C, class R, class... P>
struct Thunk {
    static Result __stdcall call(CallableWrapper* self, typename Argument<P>::Type... arguments,
                                 typename Native<R>::Type* result) {
        if (result) *result = {};
        if (!result || (Argument<P>::isNull(arguments) || ...))
            return marshaller->fail(*self->info, Error::fromHresult(kPointer));
        return enter<Member, C, R, P...>(*self, {arguments...}, result);
    }
};
template <auto Member, class C, class... P>
struct Thunk<Member, C, void, P...> {
    static Result __stdcall call(CallableWrapper* self, typename Argument<P>::Type... arguments) {
        if ((Argument<P>::isNull(arguments) || ...)) return marshaller->fail(*self->info, Error::fromHresult(kPointer));
        return enter<Member, C, void, P...>(*self, {arguments...});
    }
};

template <class P, bool ByReference>
using Passed = std::conditional_t<ByReference, ReadByReference<P>, P>;

template <auto Member, std::uint32_t ByReference, class C, class R, class... P, std::size_t... I>
const void* thunkOf(std::type_identity<std::tuple<P...>>, std::index_sequence<I...>) {
    using Made = Thunk<Member, C, std::remove_cvref_t<R>, Passed<P, (ByReference >> I & 1) != 0>...>;
    return reinterpret_cast<const void*>(&Made::call);
}

/// The vtable entry of a member; `ByReference` has a bit set for each parameter that is passed by reference though the
/// member only reads it.
template <auto Member, std::uint32_t ByReference>
const void* entryOf() {
    using Traits = detail::MemberTraits<decltype(Member)>;
    return thunkOf<Member, ByReference, typename Traits::Class, typename Traits::Result>(
        std::type_identity<typename Traits::Parameters>{}, std::make_index_sequence<Traits::kCount>{});
}

} // namespace tarncom32::automation::vtable
