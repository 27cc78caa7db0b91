#pragma once

#include "automation/class_info.h"
#include "com/bridge/com_ptr.h"

namespace tarncom32::com {

/// What the export of objects needs of a class, worked out from its member table once.
class ClassTable final : public automation::ExportTable {
public:
    /// Accessors of one DISPID, each null when there is none.
    struct Accessors {
        std::int32_t dispid;
        const automation::MemberInfo* method = nullptr;
        const automation::MemberInfo* get = nullptr;
        const automation::MemberInfo* let = nullptr;
        const automation::MemberInfo* set = nullptr;
    };

    /// The table of the class. Lock-free: of two threads that make it at once, one throws its own away.
    static const ClassTable& of(const automation::ClassInfo& info);

    ~ClassTable() override;

    /// The type information of the class's interface or of the class itself, the same each time; null where the type
    /// library does not have it.
    ComPtr<ITypeInfo> interfaceType() const { return typeOf(interfaceType_, info_.iid); }
    ComPtr<ITypeInfo> classType() const { return typeOf(classType_, info_.clsid); }

    /// The vtable of the class's dual interface.
    const void* const* vtable() const { return vtable_.data(); }
    /// Null when no member has the DISPID.
    const Accessors* find(std::int32_t dispid) const;

private:
    explicit ClassTable(const automation::ClassInfo& info);

    using Kept = std::atomic<ITypeInfo*>;
    ComPtr<ITypeInfo> typeOf(Kept& kept, const automation::Guid& guid) const;

    const automation::ClassInfo& info_;
    std::vector<const void*> vtable_;
    std::vector<Accessors> accessors_; ///< by DISPID
    mutable Kept interfaceType_{nullptr};
    mutable Kept classType_{nullptr};
};

/// What the callers' type information is: a coclass or an interface of the type library. A null pointer where the
/// library does not have it.
using FindType = ComPtr<ITypeInfo> (*)(REFGUID guid);

/// Set once, when the server's module is loaded; null where there is no type library.
inline FindType findType = nullptr;

/// Set when the process ends: from then on nothing of other modules is touched, and its memory goes as a whole.
inline bool processEnds = false;

} // namespace tarncom32::com
