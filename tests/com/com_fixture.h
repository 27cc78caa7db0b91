#pragma once

#include "com/bridge/dispatcher.h"
#include "com/bridge/exported_object.h"
#include "com/bridge/failure.h"
#include "com/bridge/unknown.h"
#include "com/bridge/variants.h"
#include "probe/probe.h"
#include "support/error_of.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tarncom32::com::testing {

/// What a call through IDispatch gave.
struct Outcome {
    HRESULT result = S_OK;
    Variant value;
    Error error = Error(0);
    UINT badArgument = 99;
    String source;
};

inline DISPID idOf(IDispatch* object, const wchar_t* name) {
    auto* wanted = const_cast<LPOLESTR>(name);
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &wanted, 1, 0, &id), S_OK) << toUtf8(viewOf(name));
    return id;
}

/// Calls with raw arguments, which stand in the order of DISPPARAMS: last one first.
inline Outcome invoke(IDispatch* object, DISPID id, WORD flags, std::span<VARIANT> arguments,
                      std::vector<DISPID> named = {}) {
    DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                          static_cast<UINT>(named.size())};
    OwnedVariant value;
    EXCEPINFO exception{};
    Outcome outcome;
    outcome.result = object->Invoke(id, IID_NULL, 0, flags, &parameters, &value, &exception, &outcome.badArgument);
    outcome.value = fromVariant(value);
    if (outcome.result == DISP_E_EXCEPTION) {
        outcome.error =
            Error::fromHresult(static_cast<std::int32_t>(exception.scode), viewOfBstr(exception.bstrDescription));
        outcome.source = viewOfBstr(exception.bstrSource);
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
    }
    return outcome;
}

/// Calls with values in their published order.
inline Outcome call(IDispatch* object, const wchar_t* name, std::vector<Variant> values = {},
                    WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET) {
    std::vector<OwnedVariant> held(values.size());
    std::vector<VARIANT> passed(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::size_t place = values.size() - 1 - i;
        toVariant(held[place], std::move(values[i]));
        passed[place] = held[place];
    }
    std::vector<DISPID> named;
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) named.push_back(DISPID_PROPERTYPUT);
    return invoke(object, idOf(object, name), flags, passed, named);
}

/// Replaces what the variable holds or refers to; the number of the error, 0 for none.
inline std::int32_t assign(VARIANT& target, Variant value) {
    return tests::errorOf([&] {
        Assignment assignment;
        prepareAssignment(assignment, target, std::move(value));
        commit(assignment);
    });
}

/// A probe and what COM callers hold of it; checks that nothing of either is left over.
class ComTest : public ::testing::Test {
protected:
    void SetUp() override {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        SetErrorInfo(0, nullptr); // what the test before left behind
        objectsBefore_ = Object::liveCount();
        probe = make<Probe>();
        *wrapper.put() = exportObject(probe);
    }
    void TearDown() override {
        wrapper = {};
        probe = {};
        EXPECT_EQ(Object::liveCount(), objectsBefore_);
        EXPECT_EQ(outsideCount, 0u);
        CoUninitialize();
    }

    /// Calls through the vtable of the dual interface as a compiled client does: by place and by its own declaration.
    template <class... A>
    HRESULT callSlot(const wchar_t* name, MemberKind kind, A... arguments) {
        const auto& members = Probe::describe().members;
        for (std::size_t i = 0; i < members.size(); ++i) {
            if (members[i].name != viewOf(name) || members[i].kind != kind) continue;
            using Entry = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, A...);
            Entry entry = nullptr;
            void** vtable = *reinterpret_cast<void***>(wrapper.get());
            std::memcpy(&entry, &vtable[7 + i], sizeof entry);
            return entry(wrapper.get(), arguments...);
        }
        ADD_FAILURE() << "no such member";
        return E_FAIL;
    }
    template <class... A>
    HRESULT callMethod(const wchar_t* name, A... arguments) {
        return callSlot(name, MemberKind::Method, arguments...);
    }
    /// The thread's error information, taken.
    static String lastError() {
        ComPtr<IErrorInfo> info;
        OwnedText text;
        if (GetErrorInfo(0, info.put()) != S_OK) return u"none";
        info->GetDescription(text.put());
        return String(viewOfBstr(text.get()));
    }

    Ref<Probe> probe;
    ComPtr<IDispatch> wrapper;

private:
    std::size_t objectsBefore_ = 0;
};

} // namespace tarncom32::com::testing
