#include "com/bridge/exported_object.h"

#include "com/bridge/class_table.h"
#include "com/bridge/connection_point.h"
#include "com/bridge/dispatcher.h"
#include "com/bridge/enumerator.h"
#include "com/bridge/failure.h"
#include "com/bridge/foreign_object.h"
#include "com/bridge/unknown.h"
#include "com/bridge/variants.h"
#include "com/bridge/wrapper_entries.h"

#include <ocidl.h>
#include <olectl.h>

#include <new>

namespace tarncom32::com {

using automation::ClassInfo;
using automation::Object;
using automation::ObjectRef;
using automation::vtable::CallableWrapper;

namespace vtable = automation::vtable;

namespace {

/// The COM identity of one of our objects: the wrapper with the dual interface, and the interfaces beside it.
class ExportedObject final : IProvideClassInfo2, ISupportErrorInfo, IConnectionPointContainer {
public:
    ExportedObject(Object& object, const ClassInfo& info)
        : table_(ClassTable::of(info)), wrapper_{table_.vtable(), &object, &info, this, 0}, object_(&object),
          connectionPoint_(*this, object) {
        object.exported = this;
        ++outsideCount;
    }

    static ExportedObject& of(CallableWrapper* wrapper) { return *static_cast<ExportedObject*>(wrapper->owner); }
    IDispatch* pointer() { return reinterpret_cast<IDispatch*>(&wrapper_); }
    const ClassTable& table() const { return table_; }
    const ClassInfo& info() const { return *wrapper_.info; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (!result) return E_POINTER;
        *result = interfaceOf(iid);
        if (!*result) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++wrapper_.references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --wrapper_.references;
        if (left == 0) end();
        return left;
    }

    static HRESULT give(ComPtr<ITypeInfo> found, ITypeInfo** type) {
        if (!type) return E_POINTER;
        *type = found.detach();
        return *type ? S_OK : TYPE_E_ELEMENTNOTFOUND;
    }

    // IProvideClassInfo2
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** type) override { return give(table_.classType(), type); }
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) override {
        if (!guid) return E_POINTER;
        *guid = toGuid(info().sourceIid);
        return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID && !info().sourceIid.isNull() ? S_OK : E_INVALIDARG;
    }

    // ISupportErrorInfo
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override {
        return equals(iid, info().iid) || IsEqualIID(iid, IID_IDispatch) ? S_OK : S_FALSE;
    }

    // IConnectionPointContainer
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return enumerateConnectionPoints(&connectionPoint_, points);
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
        if (!point) return E_POINTER;
        *point = nullptr;
        if (!equals(iid, info().sourceIid)) return CONNECT_E_NOCONNECTION;
        connectionPoint_.AddRef();
        *point = &connectionPoint_;
        return S_OK;
    }

private:
    ~ExportedObject() {
        object_->exported = nullptr;
        --outsideCount;
    }

    /// The last reference has gone. An object that ends with it acts for the last time while all this is whole; who
    /// takes a reference meanwhile and keeps it keeps both alive.
    void end() {
        ++wrapper_.references;
        object_->prepareRelease();
        if (--wrapper_.references != 0) return;
        ++wrapper_.references; // those who come during the end itself do not end it again
        delete this;
    }

    void* interfaceOf(REFIID iid) {
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
            (!info().iid.isNull() && equals(iid, info().iid)))
            return &wrapper_;
        if (IsEqualIID(iid, IID_IProvideClassInfo) || IsEqualIID(iid, IID_IProvideClassInfo2))
            return static_cast<IProvideClassInfo2*>(this);
        if (IsEqualIID(iid, IID_ISupportErrorInfo)) return static_cast<ISupportErrorInfo*>(this);
        if (IsEqualIID(iid, IID_IConnectionPointContainer) && object_->events())
            return static_cast<IConnectionPointContainer*>(this);
        return nullptr;
    }

    const ClassTable& table_;
    CallableWrapper wrapper_;
    ObjectRef object_;
    ConnectionPoint connectionPoint_; ///< reached only where the object has events
};

// The wrapper's IUnknown and IDispatch.

HRESULT __stdcall wrapperQueryInterface(CallableWrapper* self, REFIID iid, void** result) {
    return ExportedObject::of(self).QueryInterface(iid, result);
}
ULONG __stdcall wrapperAddRef(CallableWrapper* self) {
    return ExportedObject::of(self).AddRef();
}
ULONG __stdcall wrapperRelease(CallableWrapper* self) {
    return ExportedObject::of(self).Release();
}
HRESULT __stdcall wrapperGetTypeInfoCount(CallableWrapper* self, UINT* count) {
    if (!count) return E_POINTER;
    *count = ExportedObject::of(self).table().interfaceType() ? 1 : 0;
    return S_OK;
}
HRESULT __stdcall wrapperGetTypeInfo(CallableWrapper* self, UINT index, LCID, ITypeInfo** type) {
    if (!type) return E_POINTER;
    *type = nullptr;
    return index == 0 ? ExportedObject::give(ExportedObject::of(self).table().interfaceType(), type) : DISP_E_BADINDEX;
}
HRESULT __stdcall wrapperGetIDsOfNames(CallableWrapper* self, REFIID iid, LPOLESTR* names, UINT count, LCID,
                                       DISPID* ids) {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    return idsOfNames(*self->info, names, count, ids);
}
HRESULT __stdcall wrapperInvoke(CallableWrapper* self, DISPID dispid, REFIID iid, LCID, WORD flags,
                                DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (result) VariantInit(result);
    return invokeMember(*self, ExportedObject::of(self).table(), dispid, flags, parameters, result, exception,
                        badArgument);
}

/// What the thunks of the member tables need of the system.
class SystemMarshaller final : public vtable::Marshaller {
public:
    vtable::Text newText(automation::StringView text) const override {
        const BSTR made = newBstr(text);
        if (!made) throw std::bad_alloc();
        return reinterpret_cast<vtable::Text>(made);
    }
    void freeText(vtable::Text text) const noexcept override { SysFreeString(reinterpret_cast<BSTR>(text)); }
    automation::Variant value(const vtable::Value& value) const override { return fromVariant(asVariant(value)); }
    void initialise(vtable::Value& target, automation::Variant&& value) const override {
        toVariant(asVariant(target), std::move(value));
    }
    void clear(vtable::Value& value) const noexcept override { VariantClear(&asVariant(value)); }
    ObjectRef object(vtable::Interface pointer) const override { return importObject(static_cast<IUnknown*>(pointer)); }
    vtable::Interface pointer(const ObjectRef& object) const override {
        IDispatch* exported = exportObject(object);
        if (object && !exported) throw automation::Error(automation::errors::NoSuchMember);
        return exported;
    }
    void release(vtable::Interface pointer) const noexcept override {
        if (pointer) static_cast<IUnknown*>(pointer)->Release();
    }
    void release(CallableWrapper& wrapper) const noexcept override { ExportedObject::of(&wrapper).Release(); }
    automation::Array array(vtable::ArrayPtr array, automation::VariantType element) const override {
        return fromSafeArray(static_cast<SAFEARRAY*>(array), element);
    }
    vtable::ArrayPtr newArray(automation::Array&& array) const override { return newSafeArray(std::move(array)); }
    void free(vtable::ArrayPtr array) const noexcept override { SafeArrayDestroy(static_cast<SAFEARRAY*>(array)); }
    vtable::Interface enumerator(std::unique_ptr<automation::Enumerator> items) const override {
        return exportEnumerator(std::move(items));
    }
    void prepare(vtable::Assignment& assignment, vtable::Value& target, automation::Variant&& value) const override {
        prepareAssignment(assignment, asVariant(target), std::move(value));
    }
    void prepare(vtable::Assignment& assignment, vtable::ArrayPtr& target, automation::Array&& value) const override {
        prepareAssignment(assignment, reinterpret_cast<SAFEARRAY*&>(target), std::move(value));
    }
    void commit(vtable::Assignment& assignment) const noexcept override { com::commit(assignment); }
    vtable::Result fail(const ClassInfo& info, const automation::Error& error) const noexcept override {
        return static_cast<vtable::Result>(setErrorInfo(error, info.iid));
    }
};

static_assert(sizeof(vtable::Value) == sizeof(VARIANT) && alignof(vtable::Value) == alignof(VARIANT));
static_assert(sizeof(vtable::Result) == sizeof(HRESULT));

constexpr SystemMarshaller kMarshaller;
[[maybe_unused]] const bool kInstalled = (vtable::marshaller = &kMarshaller) != nullptr;

} // namespace

std::array<const void*, 7> dispatchEntries() {
    return {
        reinterpret_cast<const void*>(&wrapperQueryInterface), reinterpret_cast<const void*>(&wrapperAddRef),
        reinterpret_cast<const void*>(&wrapperRelease),        reinterpret_cast<const void*>(&wrapperGetTypeInfoCount),
        reinterpret_cast<const void*>(&wrapperGetTypeInfo),    reinterpret_cast<const void*>(&wrapperGetIDsOfNames),
        reinterpret_cast<const void*>(&wrapperInvoke)};
}

IDispatch* exportObject(const ObjectRef& object) {
    if (!object) return nullptr;
    auto* exported = static_cast<ExportedObject*>(object->exported);
    if (!exported) {
        const ClassInfo* info = object->classInfo();
        if (!info) return static_cast<ForeignObject&>(*object).dispatch();
        exported = new ExportedObject(*object, *info);
    }
    exported->AddRef();
    return exported->pointer();
}

IUnknown* exportUnknown(const ObjectRef& object) {
    if (object && !object->classInfo()) return static_cast<ForeignObject&>(*object).identity();
    return exportObject(object);
}

Object* ownObjectBehind(IUnknown* identity) noexcept {
    // Whatever the object is, its vtable starts with the address of its QueryInterface: ours for a wrapper of this
    // module.
    auto* wrapper = reinterpret_cast<CallableWrapper*>(identity);
    return wrapper->vtable[0] == reinterpret_cast<const void*>(&wrapperQueryInterface) ? wrapper->object : nullptr;
}

} // namespace tarncom32::com
