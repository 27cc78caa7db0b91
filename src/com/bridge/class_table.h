#pragma once

#include "automation/class_info.h"
#include "automation/wire.h"

namespace tarncom32::com {

/// What the export of objects needs of a class, worked out from its member table once.
class ClassTable {
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

    /// The vtable of the class's dual interface.
    const void* const* vtable() const { return vtable_.data(); }
    /// Null when no member has the DISPID.
    const Accessors* find(std::int32_t dispid) const;

private:
    explicit ClassTable(const automation::ClassInfo& info);

    std::vector<const void*> vtable_;
    std::vector<Accessors> accessors_; ///< by DISPID
};

} // namespace tarncom32::com
