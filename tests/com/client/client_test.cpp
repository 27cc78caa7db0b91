#include "com/client/library_under_test.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

namespace client {

namespace {

constexpr int kCallsAMember = 10'000;

using Entry = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using CanUnload = HRESULT(STDAPICALLTYPE*)();

std::string narrow(const std::wstring& text) {
    return std::string(text.begin(), text.end());
}

/// Reports of the library go to a file, and files that members are told to write go to a folder for such.
class Client : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        wchar_t folder[MAX_PATH] = L"";
        GetTempPathW(MAX_PATH, folder);
        SetCurrentDirectoryW(folder);
        SetEnvironmentVariableW(L"TARNCOM32_REPORT_LOG", kReports);
    }
    static void TearDownTestSuite() { DeleteFileW(kReports); }
    static constexpr const wchar_t* kReports = L"tarncom32 client reports.log";
    Apartment apartment;
};

TEST_F(Client, GetsWhatAFactoryOffersAndNothingElse) {
    ASSERT_FALSE(creatableClasses().empty());
    for (const Class& described : creatableClasses()) {
        SCOPED_TRACE(narrow(described.progId));
        CLSID clsid{};
        ASSERT_EQ(CLSIDFromProgID(described.progId.c_str(), &clsid), S_OK);
        IClassFactory* made = nullptr;
        ASSERT_EQ(
            CoGetClassObject(clsid, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, reinterpret_cast<void**>(&made)),
            S_OK);
        const Pointer<IClassFactory> factory(made);
        const Pointer<IDispatch> outer = create(described.progId.c_str());
        ASSERT_TRUE(outer);
        void* poisoned = &clsid;
        EXPECT_EQ(factory->CreateInstance(outer.get(), IID_IUnknown, &poisoned), CLASS_E_NOAGGREGATION);
        EXPECT_EQ(poisoned, nullptr);
        poisoned = &clsid;
        EXPECT_EQ(factory->QueryInterface(IID_IDispatch, &poisoned), E_NOINTERFACE);
        EXPECT_EQ(poisoned, nullptr);
        poisoned = &clsid;
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStorage, &poisoned), E_NOINTERFACE);
        EXPECT_EQ(poisoned, nullptr);
    }
}

/// An argument that fits a parameter.
void fit(VARIANT& argument, const ELEMDESC& parameter) {
    VARTYPE type = parameter.tdesc.vt;
    if (type == VT_PTR) type = parameter.tdesc.lptdesc->vt;
    switch (type) {
    case VT_BSTR:
        Value::setText(argument, L"a,b.c");
        break;
    case VT_BOOL:
        argument.vt = VT_BOOL;
        argument.boolVal = VARIANT_TRUE;
        break;
    case VT_VARIANT:
        Value::setText(argument, L"1");
        break;
    case VT_SAFEARRAY:
        argument.vt = VT_EMPTY;
        break;
    case VT_DISPATCH:
    case VT_PTR:
        argument.vt = VT_DISPATCH;
        break;
    default:
        argument.vt = VT_I4;
        argument.lVal = 1;
        break;
    }
}

TEST_F(Client, FindsTheVtableAndLateBindingInAgreement) {
    // The type library's own dispatcher calls through the vtable, by the types that the library declares.
    int compared = 0;
    for (const Class& described : creatableClasses()) {
        forEachMember(*described.interfaceType, [&](const FUNCDESC& member, const std::wstring& name) {
            SCOPED_TRACE(narrow(described.progId + L"." + name));
            bool arrays = false;
            for (SHORT i = 0; i < member.cParams; ++i) {
                const TYPEDESC& type = member.lprgelemdescParam[i].tdesc;
                arrays |= type.vt == VT_PTR && type.lptdesc->vt == VT_SAFEARRAY;
            }
            // Arrays need variables by reference, and names of temporary files are new each time.
            if (arrays || name.find(L"Temp") != std::wstring::npos || name == L"GetSelectedFilename") return;
            const bool put = member.invkind == INVOKE_PROPERTYPUT || member.invkind == INVOKE_PROPERTYPUTREF;
            const bool returns = member.elemdescFunc.tdesc.vt != VT_VOID;
            Value results[2];
            HRESULT codes[2] = {E_FAIL, E_FAIL};
            for (int way = 0; way < 2; ++way) {
                const Pointer<IDispatch> object = createQuiet(described);
                const auto count = static_cast<UINT>(member.cParams);
                std::vector<Value> arguments(count);
                for (UINT i = 0; i < count; ++i)
                    fit(arguments[count - 1 - i], member.lprgelemdescParam[i]);
                DISPID assigned = DISPID_PROPERTYPUT;
                DISPPARAMS parameters{arguments.data(), put ? &assigned : nullptr, count, put ? 1u : 0u};
                EXCEPINFO exception{};
                VARIANT* result = put || !returns ? nullptr : &results[way];
                const auto flags = static_cast<WORD>(member.invkind);
                codes[way] = way == 0 ? object->Invoke(member.memid, IID_NULL, 0, flags, &parameters, result,
                                                       &exception, nullptr)
                                      : described.interfaceType->Invoke(object.get(), member.memid, flags, &parameters,
                                                                        result, &exception, nullptr);
                if (codes[way] == DISP_E_EXCEPTION) codes[way] = exception.scode;
                SysFreeString(exception.bstrSource);
                SysFreeString(exception.bstrDescription);
            }
            ++compared;
            EXPECT_EQ(codes[0], codes[1]);
            if (codes[0] != S_OK) return;
            EXPECT_EQ(results[0].vt, results[1].vt);
            if (results[0].vt != VT_DISPATCH && results[0].vt != VT_EMPTY) {
                EXPECT_EQ(VarCmp(&results[0], &results[1], LOCALE_USER_DEFAULT, 0), static_cast<HRESULT>(VARCMP_EQ));
            }
        });
    }
    EXPECT_GT(compared, 20);
}

/// Any argument at all.
void randomise(VARIANT& argument, VARIANT& variable, std::mt19937& random, IDispatch* object) {
    static const wchar_t* const texts[] = {L"", L"a", L"1", L"-1", L"x,y;z", L"a!b;c!d", L"\xD800", L"C:\\a\\b.c"};
    VARIANT& target = random() % 3 ? argument : variable;
    switch (random() % 11) {
    case 0:
        break;
    case 1:
        target.vt = VT_I4;
        target.lVal = static_cast<LONG>(random() % 7) - 3;
        break;
    case 2:
        target.vt = VT_I2;
        target.iVal = static_cast<SHORT>(random());
        break;
    case 3:
        target.vt = VT_R8;
        target.dblVal = 1e300 * (random() % 3);
        break;
    case 4:
        target.vt = VT_BOOL;
        target.boolVal = static_cast<VARIANT_BOOL>(random() % 3 - 1);
        break;
    case 5:
        target.vt = VT_ERROR;
        target.scode = random() % 2 ? DISP_E_PARAMNOTFOUND : E_FAIL;
        break;
    case 6:
        target.vt = static_cast<VARTYPE>(random() % 2 ? int{VT_NULL} : int{VT_DISPATCH});
        break;
    case 7:
        target.vt = VT_DISPATCH;
        target.pdispVal = object;
        object->AddRef();
        break;
    case 8: {
        target.vt = static_cast<VARTYPE>(VT_ARRAY | (random() % 2 ? VT_VARIANT : VT_BSTR));
        SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(random() % 3), static_cast<LONG>(random() % 3) - 1}, {1, 0}};
        target.parray = SafeArrayCreate(static_cast<VARTYPE>(target.vt & VT_TYPEMASK), random() % 4 ? 1 : 2, bounds);
        break;
    }
    default:
        Value::setText(target, texts[random() % std::size(texts)]);
        break;
    }
    if (&target == &variable) {
        argument.vt = VT_BYREF | VT_VARIANT;
        argument.pvarVal = &variable;
    }
}

TEST_F(Client, SurvivesRandomCallsOnEveryMember) {
    std::mt19937 random(20240131);
    for (const Class& described : creatableClasses()) {
        forEachMember(*described.interfaceType, [&](const FUNCDESC& member, const std::wstring& name) {
            if (name == L"GetSelectedFilename") return; // It makes a dialog of its own, and waits for a user.
            DeleteFileW(kReports);
            // Without its guard a dialog would appear.
            const int callsAnObject = name == L"MaxFileSize" ? 1 : 100;
            for (int call = 0; call < kCallsAMember; call += callsAnObject) {
                const Pointer<IDispatch> object = createQuiet(described);
                ASSERT_TRUE(object);
                for (int i = 0; i < callsAnObject; ++i) {
                    const UINT count = random() % 8 ? static_cast<UINT>(member.cParams) : random() % 10;
                    std::vector<Value> arguments(count);
                    std::vector<Value> variables(count);
                    for (UINT a = 0; a < count; ++a)
                        randomise(arguments[a], variables[a], random, object.get());
                    DISPID assigned = DISPID_PROPERTYPUT;
                    const bool put = count > 0 && (member.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF));
                    DISPPARAMS parameters{arguments.data(), put ? &assigned : nullptr, count, put ? 1u : 0u};
                    EXCEPINFO exception{};
                    Value result;
                    const HRESULT code = object->Invoke(member.memid, IID_NULL, 0, static_cast<WORD>(member.invkind),
                                                        &parameters, &result, &exception, nullptr);
                    ASSERT_TRUE(code == S_OK || FAILED(code)) << narrow(name);
                    SysFreeString(exception.bstrSource);
                    SysFreeString(exception.bstrDescription);
                }
            }
        });
    }
    const HMODULE module = GetModuleHandleW(registeredPath().c_str());
    ASSERT_TRUE(module);
    const auto canUnload =
        reinterpret_cast<CanUnload>(reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    EXPECT_EQ(canUnload(), S_OK) << "something is left of a million calls";
}

TEST_F(Client, LoadsAndUnloadsAHundredTimes) {
    CLSID clsid{};
    ASSERT_EQ(CLSIDFromProgID(L"TarnCom32.StringFunctions", &clsid), S_OK);
    const std::wstring path = registeredPath();
    CoFreeUnusedLibrariesEx(0, 0);
    for (int i = 0; i < 100; ++i) {
        const HMODULE module = LoadLibraryW(path.c_str());
        ASSERT_TRUE(module);
        const auto entry =
            reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
        const auto canUnload =
            reinterpret_cast<CanUnload>(reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
        ASSERT_TRUE(entry && canUnload);
        EXPECT_EQ(canUnload(), S_OK);
        IClassFactory* factory = nullptr;
        ASSERT_EQ(entry(clsid, IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
        EXPECT_EQ(canUnload(), S_FALSE);
        IDispatch* object = nullptr;
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&object)), S_OK);
        factory->LockServer(TRUE);
        factory->Release();
        EXPECT_EQ(canUnload(), S_FALSE);
        object->Release();
        EXPECT_EQ(canUnload(), S_FALSE) << "it is locked";
        ASSERT_EQ(entry(clsid, IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
        factory->LockServer(FALSE);
        factory->Release();
        EXPECT_EQ(canUnload(), S_OK);
        FreeLibrary(module);
    }
}

TEST_F(Client, ServesEightApartmentsAtOnce) {
    std::vector<int> wrong(8, -1);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < wrong.size(); ++t)
        threads.emplace_back([&wrong, t] {
            const Apartment own;
            const Pointer<IDispatch> object = create(L"TarnCom32.StringFunctions");
            if (!object) return;
            wrong[t] = 0;
            auto* name = const_cast<LPOLESTR>(L"ReverseString");
            DISPID id = 0;
            object->GetIDsOfNames(IID_NULL, &name, 1, 0, &id);
            const std::wstring text = L"thread " + std::to_wstring(t);
            const std::wstring reversed(text.rbegin(), text.rend());
            for (int i = 0; i < 2000; ++i) {
                Value argument;
                Value::setText(argument, text.c_str());
                DISPPARAMS parameters{&argument, nullptr, 1, 0};
                Value result;
                object->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, &result, nullptr, nullptr);
                if (result.vt != VT_BSTR || reversed != result.bstrVal) ++wrong[t];
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(8, 0));
}

} // namespace

} // namespace client
