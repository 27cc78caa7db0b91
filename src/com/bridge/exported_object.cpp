#include "com/bridge/exported_object.h"

#include "com/bridge/class_table.h"
#include "com/bridge/connection_point.h"
#include "com/bridge/dispatcher.h"
#include "com/bridge/enumerator.h"
#include "com/bridge/face.h"
#include "com/bridge/failure.h"
#include "com/bridge/foreign_object.h"
#include "com/bridge/unknown.h"
#include "com/bridge/variants.h"

#include <ocidl.h>
#include <olectl.h>

#include <memory>
#include <new>

namespace tarncom32::com {

using automation::ClassInfo;
using automation::Object;
using automation::ObjectRef;
using automation::wire::Face;

namespace {

/// The COM identity of one of our objects: the face with the dual interface, and the interfaces beside it.
class ExportedObject final : IProvideClassInfo2, ISupportErrorInfo, IConnectionPointContainer {
public:
    ExportedObject(Object& object, const ClassInfo& info)
        : table_(ClassTable::of(info)), face_{table_.vtable(), &object, &info, this, 0}, object_(&object) {
        object.exported = this;
        ++outsideCount;
    }

    static ExportedObject& of(Face* face) { return *static_cast<ExportedObject*>(face->owner); }
    IDispatch* pointer() { return reinterpret_cast<IDispatch*>(&face_); }
    const ClassTable& table() const { return table_; }
    const ClassInfo& info() const { return *face_.info; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (!result) return E_POINTER;
        *result = interfaceOf(iid);
        if (!*result) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++face_.references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --face_.references;
        if (left == 0) destroy();
        return left;
    }
    void destroy() { delete this; }

    HRESULT typeOf(const automation::Guid& guid, ITypeInfo** type) noexcept {
        if (!type) return E_POINTER;
        *type = nullptr;
        if (!findType || guid.isNull()) return TYPE_E_ELEMENTNOTFOUND;
        *type = findType(toGuid(guid)).detach();
        return *type ? S_OK : TYPE_E_ELEMENTNOTFOUND;
    }

    // IProvideClassInfo2
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** type) override { return typeOf(info().clsid, type); }
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
        return enumerateConnectionPoints(container(), *object_, points);
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
        if (!point) return E_POINTER;
        *point = nullptr;
        if (!equals(iid, info().sourceIid)) return CONNECT_E_NOCONNECTION;
        *point = newConnectionPoint(container(), *object_);
        return *point ? S_OK : E_OUTOFMEMORY;
    }

private:
    ~ExportedObject() {
        object_->exported = nullptr;
        --outsideCount;
    }

    IConnectionPointContainer* container() { return this; }

    void* interfaceOf(REFIID iid) {
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
            (!info().iid.isNull() && equals(iid, info().iid)))
            return &face_;
        if (IsEqualIID(iid, IID_IProvideClassInfo) || IsEqualIID(iid, IID_IProvideClassInfo2))
            return static_cast<IProvideClassInfo2*>(this);
        if (IsEqualIID(iid, IID_ISupportErrorInfo)) return static_cast<ISupportErrorInfo*>(this);
        if (IsEqualIID(iid, IID_IConnectionPointContainer) && object_->events())
            return static_cast<IConnectionPointContainer*>(this);
        return nullptr;
    }

    const ClassTable& table_;
    Face face_;
    ObjectRef object_;
};

// The face's IUnknown and IDispatch.

HRESULT __stdcall faceQueryInterface(Face* self, REFIID iid, void** result) {
    return ExportedObject::of(self).QueryInterface(iid, result);
}
ULONG __stdcall faceAddRef(Face* self) {
    return ExportedObject::of(self).AddRef();
}
ULONG __stdcall faceRelease(Face* self) {
    return ExportedObject::of(self).Release();
}
HRESULT __stdcall faceGetTypeInfoCount(Face* self, UINT* count) {
    if (!count) return E_POINTER;
    ComPtr<ITypeInfo> type;
    *count = SUCCEEDED(ExportedObject::of(self).typeOf(self->info->iid, type.put())) ? 1 : 0;
    return S_OK;
}
HRESULT __stdcall faceGetTypeInfo(Face* self, UINT index, LCID, ITypeInfo** type) {
    if (!type) return E_POINTER;
    *type = nullptr;
    return index == 0 ? ExportedObject::of(self).typeOf(self->info->iid, type) : DISP_E_BADINDEX;
}
HRESULT __stdcall faceGetIDsOfNames(Face* self, REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    return idsOfNames(*self->info, names, count, ids);
}
HRESULT __stdcall faceInvoke(Face* self, DISPID dispid, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters,
                             VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (result) VariantInit(result);
    return invokeMember(*self, ExportedObject::of(self).table(), dispid, flags, parameters, result, exception,
                        badArgument);
}

/// What the thunks of the member tables need of the system.
class SystemConversions final : public automation::wire::Conversions {
public:
    using Value = automation::wire::Value;
    using Text = automation::wire::Text;
    using Pointer = automation::wire::Interface;
    using ArrayPtr = automation::wire::ArrayPtr;

    Text text(automation::StringView text) const noexcept override { return reinterpret_cast<Text>(newBstr(text)); }
    void freeText(Text text) const noexcept override { SysFreeString(reinterpret_cast<BSTR>(text)); }
    automation::Variant value(const Value& value) const override {
        return fromVariant(reinterpret_cast<const VARIANT&>(value));
    }
    void initialise(Value& target, automation::Variant&& value) const noexcept override {
        initVariant(reinterpret_cast<VARIANT&>(target), std::move(value));
    }
    void assign(Value& target, automation::Variant&& value) const noexcept override {
        assignVariant(reinterpret_cast<VARIANT&>(target), std::move(value));
    }
    ObjectRef object(Pointer pointer) const override { return importObject(static_cast<IUnknown*>(pointer)); }
    Pointer pointer(const ObjectRef& object) const noexcept override { return exportObject(object); }
    void release(Pointer pointer) const noexcept override {
        if (pointer) static_cast<IUnknown*>(pointer)->Release();
    }
    void destroy(Face& face) const noexcept override { ExportedObject::of(&face).destroy(); }
    automation::Array array(ArrayPtr array, automation::VariantType element) const override {
        return fromSafeArray(static_cast<SAFEARRAY*>(array), element);
    }
    void assign(ArrayPtr& target, const automation::Array& array) const noexcept override {
        auto* held = static_cast<SAFEARRAY*>(target);
        assignSafeArray(held, array);
        target = held;
    }
    Pointer enumerator(std::unique_ptr<automation::Enumerator> walk) const override {
        return exportEnumerator(std::move(walk));
    }
    std::int32_t fail(const ClassInfo& info) const noexcept override {
        return static_cast<std::int32_t>(setErrorInfo(errorInFlight(), info.iid));
    }
    std::int32_t fail(const ClassInfo& info, std::int32_t result) const noexcept override {
        setErrorInfo(automation::Error::fromHresult(result), info.iid);
        return result;
    }
};

static_assert(sizeof(automation::wire::Value) == sizeof(VARIANT) &&
              alignof(automation::wire::Value) == alignof(VARIANT));
static_assert(sizeof(automation::wire::Result) == sizeof(HRESULT));

constexpr SystemConversions kConversions;
[[maybe_unused]] const bool kInstalled = (automation::wire::conversions = &kConversions) != nullptr;

} // namespace

std::array<const void*, 7> dispatchEntries() {
    return {reinterpret_cast<const void*>(&faceQueryInterface), reinterpret_cast<const void*>(&faceAddRef),
            reinterpret_cast<const void*>(&faceRelease),        reinterpret_cast<const void*>(&faceGetTypeInfoCount),
            reinterpret_cast<const void*>(&faceGetTypeInfo),    reinterpret_cast<const void*>(&faceGetIDsOfNames),
            reinterpret_cast<const void*>(&faceInvoke)};
}

IDispatch* exportObject(const ObjectRef& object) noexcept {
    if (!object) return nullptr;
    auto* exported = static_cast<ExportedObject*>(object->exported);
    if (!exported) {
        const ClassInfo* info = object->classInfo();
        if (!info) return static_cast<ForeignObject&>(*object).dispatch();
        exported = new (std::nothrow) ExportedObject(*object, *info);
        if (!exported) return nullptr;
    }
    exported->AddRef();
    return exported->pointer();
}

IUnknown* exportUnknown(const ObjectRef& object) noexcept {
    if (object && !object->classInfo()) return static_cast<ForeignObject&>(*object).identity();
    return exportObject(object);
}

Object* ownObjectBehind(IUnknown* identity) noexcept {
    // Whatever the object is, its vtable starts with the address of its QueryInterface: ours for a face of this module.
    auto* face = reinterpret_cast<Face*>(identity);
    return face->vtable[0] == reinterpret_cast<const void*>(&faceQueryInterface) ? face->object : nullptr;
}

} // namespace tarncom32::com
