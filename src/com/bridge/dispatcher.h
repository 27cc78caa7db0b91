#pragma once

#include "automation/vtable.h"
#include "com/bridge/class_table.h"
#include "com/bridge/com_ptr.h"

/// IDispatch out of the member tables, without the type library.
namespace tarncom32::com {

/// IDispatch::GetIDsOfNames: the first name is a member's, those behind it are its parameters'; a parameter's number
/// is its place, from 0. Case of the Latin letters does not count.
HRESULT idsOfNames(const automation::ClassInfo& info, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

/// IDispatch::Invoke. Besides the documented: arguments that a property without parameters does not take go to the
/// default member of the object it gives (`pages(1)`), and PROPERTYPUT and PROPERTYPUTREF stand in for each other
/// where a property has only one of them.
HRESULT invokeMember(automation::vtable::CallableWrapper& wrapper, const ClassTable& table, DISPID dispid, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept;

} // namespace tarncom32::com
