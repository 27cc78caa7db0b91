#include "com/client/library_under_test.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

namespace client {

namespace {

constexpr int kCallsAMember = 10'000;

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
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(CoGetClassObject(idOfClass(described.progId), CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                                   factory.putVoid()),
                  S_OK);
        const ComPtr<IDispatch> outer = create(described.progId);
        ASSERT_TRUE(outer);
        int poison = 0;
        void* refused[] = {&poison, &poison, &poison};
        EXPECT_EQ(factory->CreateInstance(outer.get(), IID_IUnknown, &refused[0]), CLASS_E_NOAGGREGATION);
        EXPECT_EQ(factory->QueryInterface(IID_IDispatch, &refused[1]), E_NOINTERFACE);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStorage, &refused[2]), E_NOINTERFACE);
        for (const void* out : refused)
            EXPECT_EQ(out, nullptr);
    }
}

/// An argument that fits a parameter.
void fit(VARIANT& argument, const TYPEDESC& parameter) {
    const VARTYPE type = parameter.vt == VT_PTR ? parameter.lptdesc->vt : parameter.vt;
    if (type == VT_BSTR || type == VT_VARIANT) {
        setText(argument, type == VT_BSTR ? L"a,b.c" : L"1");
    } else if (type == VT_DISPATCH || type == VT_PTR) {
        argument.vt = VT_DISPATCH;
    } else {
        argument.vt = static_cast<VARTYPE>(type == VT_BOOL ? VT_BOOL : VT_I4);
        argument.lVal = type == VT_BOOL ? VARIANT_TRUE : 1;
    }
}

TEST_F(Client, FindsTheVtableAndLateBindingInAgreement) {
    // The type library's own dispatcher calls through the vtable, by the types that the library declares.
    int compared = 0;
    for (const Class& described : creatableClasses()) {
        forEachMember(*described.interfaceType.get(), [&](const FUNCDESC& member, const std::wstring& name) {
            SCOPED_TRACE(narrow(described.progId + L"." + name));
            const auto count = static_cast<std::size_t>(member.cParams);
            bool arrays = false;
            for (std::size_t i = 0; i < count; ++i) {
                const TYPEDESC& type = member.lprgelemdescParam[i].tdesc;
                arrays |= type.vt == VT_PTR && type.lptdesc->vt == VT_SAFEARRAY;
            }
            // Arrays need variables by reference, and names of temporary files are new each time.
            if (arrays || name.find(L"Temp") != std::wstring::npos || name == L"GetSelectedFilename") return;
            const bool returns = member.elemdescFunc.tdesc.vt != VT_VOID &&
                                 !(member.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF));
            Value results[2];
            HRESULT codes[2] = {E_FAIL, E_FAIL};
            for (int way = 0; way < 2; ++way) {
                const ComPtr<IDispatch> object = createQuiet(described);
                std::vector<Value> arguments(count);
                for (std::size_t i = 0; i < count; ++i)
                    fit(arguments[count - 1 - i], member.lprgelemdescParam[i].tdesc);
                codes[way] =
                    invoke(*object.get(), member.memid, member.invkind, arguments, returns ? &results[way] : nullptr,
                           way == 0 ? nullptr : described.interfaceType.get());
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

/// Any argument at all, in itself or in a variable.
void randomise(VARIANT& argument, VARIANT& variable, std::mt19937& random, IDispatch* object) {
    static const wchar_t* const texts[] = {L"", L"a", L"1", L"-1", L"x,y;z", L"a!b;c!d", L"\xD800", L"C:\\a\\b.c"};
    static const int types[] = {VT_EMPTY, VT_NULL,     VT_I4,    VT_I2,   VT_R8,  VT_BOOL,
                                VT_ERROR, VT_DISPATCH, VT_ARRAY, VT_BSTR, VT_BSTR};
    VARIANT& target = random() % 3 ? argument : variable;
    const auto bits = static_cast<std::uint32_t>(random());
    target.vt = static_cast<VARTYPE>(types[random() % std::size(types)]);
    target.lVal = bits % 2 ? static_cast<SHORT>(bits >> 16) : static_cast<LONG>(bits % 7) - 3;
    if (target.vt == VT_R8) target.dblVal = 1e300 * (bits % 3);
    if (target.vt == VT_ERROR && bits % 2) target.scode = DISP_E_PARAMNOTFOUND;
    if (target.vt == VT_BSTR) setText(target, texts[bits % std::size(texts)]);
    if (target.vt == VT_DISPATCH) {
        target.pdispVal = bits % 2 ? object : nullptr;
        if (target.pdispVal) object->AddRef();
    }
    if (target.vt == VT_ARRAY) {
        target.vt |= bits % 2 ? VT_VARIANT : VT_BSTR;
        SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(random() % 3), static_cast<LONG>(random() % 3) - 1}, {1, 0}};
        target.parray = SafeArrayCreate(static_cast<VARTYPE>(target.vt & VT_TYPEMASK), random() % 4 ? 1 : 2, bounds);
    }
    if (&target == &variable) {
        argument.vt = VT_BYREF | VT_VARIANT;
        argument.pvarVal = &variable;
    }
}

TEST_F(Client, SurvivesRandomCallsOnEveryMemberAndLeavesNothingBehind) {
    std::mt19937 random(20240131);
    for (const Class& described : creatableClasses()) {
        forEachMember(*described.interfaceType.get(), [&](const FUNCDESC& member, const std::wstring& name) {
            if (name == L"GetSelectedFilename") return; // It makes a dialog of its own, and waits for a user.
            DeleteFileW(kReports);
            // Without its guard a dialog would appear.
            const int callsAnObject = name == L"MaxFileSize" ? 1 : 100;
            for (int call = 0; call < kCallsAMember; call += callsAnObject) {
                const ComPtr<IDispatch> object = createQuiet(described);
                ASSERT_TRUE(object);
                for (int i = 0; i < callsAnObject; ++i) {
                    const std::size_t count = random() % 8 ? static_cast<std::size_t>(member.cParams) : random() % 10;
                    std::vector<Value> arguments(count);
                    std::vector<Value> variables(count);
                    for (std::size_t a = 0; a < count; ++a)
                        randomise(arguments[a], variables[a], random, object.get());
                    Value result;
                    const HRESULT code = invoke(*object.get(), member.memid, member.invkind, arguments, &result);
                    ASSERT_TRUE(code == S_OK || FAILED(code)) << narrow(name);
                }
            }
        });
    }
    const HMODULE module = GetModuleHandleW(registeredPath().c_str());
    ASSERT_TRUE(module);
    EXPECT_EQ(callEntry(module, "DllCanUnloadNow"), S_OK) << "something is left of a million calls";
}

TEST_F(Client, LoadsAndUnloadsAHundredTimes) {
    const CLSID clsid = idOfClass(L"TarnCom32.StringFunctions");
    const std::wstring path = registeredPath();
    CoFreeUnusedLibrariesEx(0, 0);
    for (int i = 0; i < 100; ++i) {
        const HMODULE module = LoadLibraryW(path.c_str());
        ASSERT_TRUE(module);
        const auto canUnload = [&] { return callEntry(module, "DllCanUnloadNow"); };
        EXPECT_EQ(canUnload(), S_OK);
        ComPtr<IClassFactory> factory = factoryOf(module, clsid);
        ASSERT_TRUE(factory);
        EXPECT_EQ(canUnload(), S_FALSE);
        ComPtr<IDispatch> object;
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, object.putVoid()), S_OK);
        factory->LockServer(TRUE);
        factory = {};
        EXPECT_EQ(canUnload(), S_FALSE);
        object = {};
        EXPECT_EQ(canUnload(), S_FALSE) << "it is locked";
        factoryOf(module, clsid)->LockServer(FALSE);
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
            const ComPtr<IDispatch> object = create(L"TarnCom32.StringFunctions");
            if (!object) return;
            wrong[t] = 0;
            const DISPID id = idOf(*object.get(), L"ReverseString");
            const std::wstring text = L"thread " + std::to_wstring(t);
            const std::wstring reversed(text.rbegin(), text.rend());
            for (int i = 0; i < 2000; ++i) {
                std::vector<Value> argument(1);
                setText(argument[0], text.c_str());
                Value result;
                invoke(*object.get(), id, INVOKE_FUNC, argument, &result);
                if (result.vt != VT_BSTR || reversed != result.bstrVal) ++wrong[t];
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(8, 0));
}

} // namespace

} // namespace client
