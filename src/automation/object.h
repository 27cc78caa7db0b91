#pragma once

#include "automation/member_name.h"
#include "automation/string.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>

namespace tarncom32::automation {

class Variant;
class Error;
class EventSource;
struct ClassInfo;
struct MemberInfo;
template <class T>
class Ref;

/// How a member is reached.
enum class Access : std::uint8_t {
    Method,      ///< a call
    Get,         ///< reading a property
    Let,         ///< assigning a value to a property
    Set,         ///< assigning an object reference to a property
    MethodOrGet, ///< what `object.Name(...)` in an expression means: a method, else a property
};

/// Gives the items of a collection, one time, from the first to the last.
class Enumerator {
public:
    virtual ~Enumerator() = default;
    /// Puts the next item into `item`; false, leaving it, when there is none.
    virtual bool next(Variant& item) = 0;
    /// Another one that stands where this one stands.
    virtual std::unique_ptr<Enumerator> clone() const = 0;
};

/// Anything that automation can hold a reference to: an object of this library, of the stand-in, or a foreign one.
/// Members are found by name without regard to case. Counted intrusively: hold one through `Ref`.
class Object {
public:
    Object() noexcept { ++liveCount_; }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    /// For `Ref`: one reference more, and one fewer, which ends the object with the last: see `finalRelease`.
    void addRef() const noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void release() const noexcept {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) const_cast<Object*>(this)->end();
    }
    /// One reference more, unless the last has gone already: for tables that find objects without holding them, which
    /// they must keep from being deleted meanwhile.
    bool tryAddRef() const noexcept;
    /// Whether the last reference has gone once: `finalRelease` has been, or is just being, called.
    bool hasEnded() const noexcept { return finalReleaseCalled_.load(std::memory_order_acquire); }
    /// For a holder about to let go: calls `finalRelease` now, while all that stands around the object is whole, if
    /// the caller's is the last reference.
    void prepareRelease() noexcept;

    /// The name of the object's class, as `TypeName` of a script gives it.
    virtual String typeName() const = 0;

    /// Calls the member `name`. `arguments` stand in their published order (a property's value last); whatever the
    /// member writes to a by-reference parameter stands in its argument afterwards. `byReference` has a bit set for
    /// each argument (lowest bit: first) whose changes the caller wants from a foreign object. Raises 438 when there
    /// is no such member, 449/450 for missing/too many arguments, 13 or 6 when an argument does not convert, and
    /// whatever the member raises.
    virtual Variant invoke(const MemberName& name, Access access, std::span<Variant> arguments,
                           std::uint32_t byReference = 0) = 0;

    /// Calls a method with its last argument given by the name of its parameter; the others stand in their published
    /// order. An object that does not go by parameters' names takes that argument by its place as well: let the two
    /// agree. Raises as `invoke` does.
    virtual Variant invokeNamed(const MemberName& name, const MemberName& parameter, std::span<Variant> arguments);

    /// Whether the object answers to `name`, whatever the kind of member.
    virtual bool hasMember(const MemberName& name) = 0;

    /// An enumerator of the object's items. Raises 451 when the object is no collection.
    virtual std::unique_ptr<Enumerator> enumerate();

    /// The object's description; null for a foreign object.
    virtual const ClassInfo* classInfo() const { return nullptr; }

    /// Deals with the failure of a caller's by-reference variable to take what the member wrote, in the member's own
    /// style; false when the caller is to get it.
    bool settlesFailure(const MemberInfo& member, const Error& error);

    /// The events that the object raises; null when it raises none.
    virtual EventSource* events() { return nullptr; }

    /// Calls a method, or reads a property that takes arguments, and returns what it gives; raises as `invoke` does.
    /// The arguments are copied into variants: what a member writes to a by-reference parameter is lost. To have it,
    /// `invoke` with variants of your own:
    ///
    ///     Variant arguments[] = {u"a b", u"b"};
    ///     object->invoke(u"NumberOfExactMatchesRemovedFromString", Access::Method, arguments);
    ///     toText(arguments[0]); // the source as the member left it
    template <class... Args>
    Variant call(const MemberName& name, Args&&... args);
    /// Reads a property; the same as `call`, for calls that read better so.
    template <class... Args>
    Variant get(const MemberName& name, Args&&... args);
    /// Assigns the last argument; the others are the property's own arguments.
    template <class... Args>
    void put(const MemberName& name, Args&&... args);
    /// Assigns an object reference.
    template <class... Args>
    void putReference(const MemberName& name, Args&&... args);

    /// The number by which 32-bit interfaces (a window's data, a weak reference) know the object: above 0, the same as
    /// long as the object lives, and never another object's. Any thread may ask. Raises 7 when 65,535 objects have one.
    /// One from outside is known by its number as long as this module holds a reference to it.
    std::int32_t handle();
    /// The object of that number; Nothing when there is none or it has gone.
    static Ref<Object> ofHandle(std::int32_t handle) noexcept;

    /// What stands for the object in front of COM callers; null when there is none. It belongs to whoever exports the
    /// object, and is only touched on the object's own thread.
    void* exported = nullptr;

    /// Objects alive in this process; 0 once every reference has gone.
    static std::size_t liveCount() noexcept { return liveCount_.load(); }

protected:
    virtual ~Object() { --liveCount_; }

    /// Called once, when the last reference has gone and before anything of the object has: it may still act as ever,
    /// raise events for example, and be referred to. An object to which a reference is left behind here lives on until
    /// that goes, without a second call. An exception that leaves this has nobody to go to.
    virtual void finalRelease() {}

    /// Reports a failure of the member to the user as the member itself does; false when the object has no way to.
    virtual bool reportFailure(const MemberInfo&, const Error&) { return false; }

private:
    void end() noexcept;
    void callFinalRelease() noexcept;

    static std::atomic<std::size_t> liveCount_;
    mutable std::atomic<std::uint32_t> references_{0};
    std::atomic<std::int32_t> handle_{0}; ///< 0 until somebody asks for one
    std::atomic<bool> finalReleaseCalled_{false};
};

/// A counted reference; null is automation's Nothing.
template <class T>
class Ref {
public:
    using element_type = T;

    constexpr Ref() noexcept = default;
    constexpr Ref(std::nullptr_t) noexcept {}
    explicit(false) Ref(T* object) noexcept : object_(object) {
        if (object_) object_->addRef();
    }
    Ref(const Ref& other) noexcept : Ref(other.object_) {}
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template <class U>
    requires std::is_convertible_v<U*, T*>
    explicit(false) Ref(const Ref<U>& other) noexcept : Ref(static_cast<T*>(other.get())) {}
    ~Ref() {
        if (object_) object_->release();
    }
    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    friend bool operator==(const Ref& left, const Ref& right) noexcept { return left.object_ == right.object_; }

private:
    T* object_ = nullptr;
};

using ObjectRef = Ref<Object>;

/// Makes an object and its first reference.
template <class T, class... Args>
Ref<T> make(Args&&... args) {
    return Ref<T>(new T(std::forward<Args>(args)...));
}

/// The object behind `reference`. Raises 91 when it is Nothing. The object of a temporary reference is for use within
/// the expression, behind which it may be gone; no `T&` binds to it.
template <class T>
T& deref(const Ref<T>& reference);
template <class T>
T&& deref(Ref<T>&& reference);

} // namespace tarncom32::automation

#include "automation/variant.h"
