#pragma once

#include "automation/guid.h"
#include "automation/type.h"

#include <atomic>
#include <optional>
#include <vector>

namespace tarncom32::automation {

/// Which way a parameter's value travels.
enum class Direction : std::uint8_t {
    In,    ///< to the member only
    InOut, ///< by reference: the member reads it and may change it
    Out,   ///< by reference: the member only writes it
};

/// A parameter of a member or of an event, as published.
struct ParameterInfo {
    StringView name;
    Direction direction = Direction::In;
    bool optional = false;
    Variant defaultValue{kMissing}; ///< what an omitted optional argument stands for; missing: the type's empty value
    Type type{};                    ///< worked out from the C++ member
    bool readByReference = false;   ///< a compiled caller passes its variable's address, though it is only read

    /// Whether the member may write what the caller passes.
    bool isByReference() const { return direction != Direction::In; }
    /// Whether a compiled caller passes an address. Arrays have one always.
    bool isAddress() const { return isByReference() || readByReference || type.isArray; }
};

inline ParameterInfo in(StringView name) {
    return {name, Direction::In, false};
}
inline ParameterInfo inOut(StringView name) {
    return {name, Direction::InOut, false};
}
inline ParameterInfo out(StringView name) {
    return {name, Direction::Out, false};
}
/// Makes a parameter optional.
inline ParameterInfo optional(ParameterInfo parameter, Variant defaultValue = kMissing) {
    parameter.optional = true;
    parameter.defaultValue = std::move(defaultValue);
    return parameter;
}

/// More parameters than any member has.
inline constexpr std::size_t kMostParameters = 16;

/// What a member does about a failure.
enum class FailureStyle : std::uint8_t {
    Raise,  ///< the caller gets it
    Report, ///< the user is told; the caller gets what there was before
    Silent, ///< the failing step is skipped
};

enum class MemberKind : std::uint8_t { Method, Get, Let, Set };

/// Numbers of members that automation gives a meaning to.
inline constexpr std::int32_t kDispidValue = 0;
inline constexpr std::int32_t kDispidNewEnum = -4;

/// How a member appears to those who browse the library.
enum class Visibility : std::uint8_t { Normal, Hidden, Restricted };

class LateArgument;

/// One line of a class's member table. Accessors of one property share a name, a DISPID, the names of their indexes and
/// a help sentence: type libraries have one of each for a property.
struct MemberInfo {
    using Invoker = Variant (*)(Object& self, const MemberInfo& member, std::span<LateArgument> arguments);

    StringView name;
    std::int32_t dispid = 0;
    MemberKind kind = MemberKind::Method;
    StringView help;
    Visibility visibility = Visibility::Normal;
    Type result{};
    std::vector<ParameterInfo> parameters{}; ///< the value that a let or set assigns is the last of them
    Invoker invoke = nullptr;
    /// Set for the member behind DISPID_NEWENUM: gives an enumerator of the object's items.
    std::unique_ptr<Enumerator> (*enumerate)(Object& self) = nullptr;
    /// The entry of the member in the dual interface's vtable; null where there is no COM.
    const void* vtableEntry = nullptr;
    /// Where that entry finds this line, once it stands in its class's table; null where it does not need it.
    const MemberInfo** published = nullptr;
    FailureStyle failureStyle = FailureStyle::Raise;
};

/// An event of a class, in the slot order of its source interface; `event::line` makes one.
struct EventInfo {
    StringView name;
    std::int32_t dispid = 0;
    StringView help;
    std::vector<ParameterInfo> parameters{};
};

/// See `ClassInfo::exportTable`.
class ExportTable {
public:
    virtual ~ExportTable() = default;
};

/// The description of a class. Everything that looks at a class from outside (late binding, help, the type library)
/// is derived from it.
struct ClassInfo {
    StringView name;
    StringView help;
    Guid clsid{}; ///< null for a class that is not published
    Guid iid{};
    Guid sourceIid{};                ///< null for a class without events
    std::vector<MemberInfo> members; ///< in the order of the interface
    std::vector<EventInfo> events{};

    /// Throws `std::logic_error` when a C++ member has a line already, in any table, with parameters that are passed
    /// in another way or have other defaults.
    ClassInfo(StringView className, StringView classHelp, Guid classId, Guid interfaceId, std::vector<MemberInfo> table,
              Guid sourceInterfaceId = {}, std::vector<EventInfo> eventTable = {});

    /// The member that `access` to `name` reaches; null when there is none. The empty name is the default member.
    const MemberInfo* find(const MemberName& wanted, Access access) const;
    /// Any member of that name; null when there is none.
    const MemberInfo* findAny(const MemberName& wanted) const;
    /// The member that `access` to `dispid` reaches; null when there is none.
    const MemberInfo* find(std::int32_t dispid, Access access) const;

    /// What the exporter of objects worked out from the table; made once and freed with the description.
    mutable std::atomic<const ExportTable*> exportTable{nullptr};

    ~ClassInfo();

private:
    // Open addressing over the names' hashes; a slot holds the first member of a name, members of one name follow
    // each other through `nextOfName_`.
    std::vector<std::uint16_t> slots_;
    std::vector<std::uint16_t> nextOfName_;
};

/// Error 438, naming the member and the class.
Error noSuchMember(const ClassInfo& info, const MemberName& name);

} // namespace tarncom32::automation
