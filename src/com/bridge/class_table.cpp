#include "com/bridge/class_table.h"

#include "com/bridge/failure.h"
#include "com/bridge/wrapper_entries.h"

#include <algorithm>
#include <memory>

namespace tarncom32::com {

using automation::ClassInfo;
using automation::MemberInfo;
using automation::MemberKind;

ClassTable::ClassTable(const ClassInfo& info) : info_(info) {
    const auto dispatch = dispatchEntries();
    vtable_.assign(dispatch.begin(), dispatch.end());
    for (const MemberInfo& member : info.members) {
        vtable_.push_back(member.vtableEntry);
        auto place = std::ranges::lower_bound(accessors_, member.dispid, {}, &Accessors::dispid);
        if (place == accessors_.end() || place->dispid != member.dispid)
            place = accessors_.insert(place, Accessors{member.dispid});
        switch (member.kind) {
        case MemberKind::Method:
            place->method = &member;
            break;
        case MemberKind::Get:
            place->get = &member;
            break;
        case MemberKind::Let:
            place->let = &member;
            break;
        case MemberKind::Set:
            place->set = &member;
            break;
        }
    }
}

ClassTable::~ClassTable() {
    for (const Kept* kept : {&interfaceType_, &classType_})
        if (ITypeInfo* type = kept->load(); type && !processEnds) type->Release();
}

ComPtr<ITypeInfo> ClassTable::typeOf(Kept& kept, const automation::Guid& guid) const {
    ITypeInfo* type = kept.load(std::memory_order_acquire);
    if (!type && findType && !guid.isNull()) {
        ComPtr<ITypeInfo> found = findType(toGuid(guid));
        if (kept.compare_exchange_strong(type, found.get(), std::memory_order_acq_rel)) type = found.detach();
    }
    return ComPtr<ITypeInfo>(type);
}

const ClassTable& ClassTable::of(const ClassInfo& info) {
    const automation::ExportTable* table = info.exportTable.load(std::memory_order_acquire);
    if (!table) {
        std::unique_ptr<const ClassTable> fresh(new ClassTable(info));
        if (info.exportTable.compare_exchange_strong(table, fresh.get(), std::memory_order_acq_rel))
            table = fresh.release();
    }
    return static_cast<const ClassTable&>(*table);
}

const ClassTable::Accessors* ClassTable::find(std::int32_t dispid) const {
    const auto place = std::ranges::lower_bound(accessors_, dispid, {}, &Accessors::dispid);
    return place != accessors_.end() && place->dispid == dispid ? &*place : nullptr;
}

} // namespace tarncom32::com
