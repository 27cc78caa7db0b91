#pragma once

#include "automation/object.h"
#include "automation/variant.h"
#include "com/bridge/com_ptr.h"

#include <unordered_map>

namespace tarncom32::com {

/// An object from outside. There is one for each COM identity and thread as long as anything holds it, so that two
/// references to one object compare equal. The DISPIDs of its members and their named arguments are asked for
/// once.
class ForeignObject final : public automation::Object {
public:
    explicit ForeignObject(ComPtr<IUnknown> identity);

    automation::String typeName() const override;
    /// An argument whose bit is set in `byReference` goes as a reference to a variable of its own type.
    automation::Variant invoke(const automation::MemberName& name, automation::Access access,
                               std::span<automation::Variant> arguments, std::uint32_t byReference) override;
    automation::Variant invokeNamed(const automation::MemberName& name, const automation::MemberName& parameter,
                                    std::span<automation::Variant> arguments) override;
    bool hasMember(const automation::MemberName& name) override;
    std::unique_ptr<automation::Enumerator> enumerate() override;

    /// The object itself, counted.
    IUnknown* identity() const;
    /// Its late binding, counted; null when it has none.
    IDispatch* dispatch() const;

    /// The number of the thread to which the object belongs.
    DWORD thread() const { return thread_; }

protected:
    void finalRelease() override;

private:
    struct KnownName {
        automation::String text; ///< of a parameter: its member's name, a line feed and its own
        DISPID dispid;           ///< of a parameter that the object does not know by name: DISPID_UNKNOWN
    };
    const KnownName* findKnown(const automation::MemberName& name) const;
    /// Members that are not there are looked for anew each time: an object may get them.
    HRESULT dispidOf(const automation::MemberName& name, DISPID& dispid);
    DISPID parameterOf(const automation::MemberName& name, const automation::MemberName& parameter);
    /// Calls the member; `named` is the id of the last argument, null when that has none.
    automation::Variant send(DISPID dispid, automation::Access access, std::span<automation::Variant> arguments,
                             std::uint32_t byReference, DISPID* named);

    ComPtr<IUnknown> identity_;
    ComPtr<IDispatch> dispatch_;
    DWORD thread_;
    std::unordered_multimap<std::uint32_t, KnownName> names_; ///< by hash
};

/// The object behind an interface pointer from outside: one of our own when it is the wrapper of one, Nothing for null.
automation::ObjectRef importObject(IUnknown* pointer);

} // namespace tarncom32::com
