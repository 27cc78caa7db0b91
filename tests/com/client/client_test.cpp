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

/// An argument that fits a parameter; for one by reference, a reference to the variable.
void fit(VARIANT& argument, VARIANT& variable, const TYPEDESC& parameter) {
    const bool reference = parameter.vt == VT_PTR && parameter.lptdesc->vt != VT_USERDEFINED;
    const TYPEDESC& type = reference ? *parameter.lptdesc : parameter;
    VARIANT& target = reference ? variable : argument;
    target.vt = type.vt;
    target.lVal = type.vt == VT_BOOL ? VARIANT_TRUE : 1;
    if (type.vt == VT_BSTR || type.vt == VT_VARIANT) setText(target, type.vt == VT_BSTR ? L"a,b.c" : L"1");
    if (type.vt == VT_USERDEFINED) target.vt = VT_I4;
    if (type.vt == VT_DISPATCH || type.vt == VT_PTR) {
        target.vt = VT_DISPATCH;
        target.pdispVal = nullptr;
    }
    if (type.vt == VT_SAFEARRAY) {
        target.vt = static_cast<VARTYPE>(VT_ARRAY | type.lptdesc->vt);
        target.parray = SafeArrayCreateVector(type.lptdesc->vt, 3, 2);
    }
    if (!reference) return;
    argument.vt = static_cast<VARTYPE>(VT_BYREF | (type.vt == VT_VARIANT ? VARTYPE{VT_VARIANT} : target.vt));
    argument.byref = type.vt == VT_VARIANT ? static_cast<void*>(&target) : &target.byref;
}

/// The value's type and what it holds; of an object no more than the type.
std::wstring textOf(VARIANT& value) {
    std::wstring text = std::to_wstring(value.vt);
    if (value.vt & VT_ARRAY) {
        LONG index = 0;
        LONG upper = -1;
        SafeArrayGetLBound(value.parray, 1, &index);
        SafeArrayGetUBound(value.parray, 1, &upper);
        text += L" from " + std::to_wstring(index);
        for (; index <= upper; ++index) {
            Value element;
            element.vt = value.vt & VT_TYPEMASK;
            SafeArrayGetElement(value.parray, &index,
                                element.vt == VT_VARIANT ? static_cast<void*>(&element) : &element.byref);
            text += L", " + textOf(element);
        }
    }
    Value converted;
    if (value.vt != VT_DISPATCH && VariantChangeType(&converted, &value, 0, VT_BSTR) == S_OK)
        text += L" " + std::wstring(converted.bstrVal, SysStringLen(converted.bstrVal));
    return text;
}

TEST_F(Client, FindsTheVtableAndLateBindingInAgreement) {
    // The type library's own dispatcher calls through the vtable, by the types that the library declares.
    int compared = 0;
    for (const Class& described : creatableClasses()) {
        forEachMember(*described.interfaceType.get(), [&](const FUNCDESC& member, const std::wstring& name) {
            SCOPED_TRACE(narrow(described.progId + L"." + name));
            // Names of temporary files are new each time.
            if (name.find(L"Temp") != std::wstring::npos || name == L"GetSelectedFilename") return;
            const auto count = static_cast<std::size_t>(member.cParams);
            const bool returns = member.elemdescFunc.tdesc.vt != VT_VOID &&
                                 !(member.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF));
            std::wstring left[2]; // the result, the variables and the failure
            for (int way = 0; way < 2; ++way) {
                const ComPtr<IDispatch> object = createQuiet(described);
                std::vector<Value> arguments(count);
                std::vector<Value> variables(count);
                Value result;
                for (std::size_t i = 0; i < count; ++i)
                    fit(arguments[count - 1 - i], variables[i], member.lprgelemdescParam[i].tdesc);
                const HRESULT code =
                    invoke(*object.get(), member.memid, member.invkind, arguments, returns ? &result : nullptr,
                           way == 0 ? nullptr : described.interfaceType.get());
                left[way] = std::to_wstring(code) + (code == S_OK ? L": " + textOf(result) : L"");
                for (Value& variable : variables)
                    left[way] += L"; " + textOf(variable);
            }
            ++compared;
            EXPECT_EQ(left[0], left[1]);
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

/// The blocks in use on all heaps of the process.
std::size_t blocksInUse() {
    HANDLE heaps[64];
    std::size_t total = 0;
    for (DWORD left = GetProcessHeaps(static_cast<DWORD>(std::size(heaps)), heaps); left > 0; --left) {
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[left - 1], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) ++total;
    }
    return total;
}

/// Creates an object of the class, asks for its type twice, and has one of its members fail.
void use(HMODULE module, REFCLSID clsid) {
    const ComPtr<IClassFactory> factory = factoryOf(module, clsid);
    ASSERT_TRUE(factory);
    ComPtr<IDispatch> object;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, object.putVoid()), S_OK);
    ComPtr<ITypeInfo> types[2];
    for (ComPtr<ITypeInfo>& type : types)
        EXPECT_EQ(object->GetTypeInfo(0, 0, type.put()), S_OK);
    EXPECT_EQ(types[0].get(), types[1].get());
    std::vector<Value> tooMany(12);
    EXPECT_TRUE(FAILED(invoke(*object.get(), 1, INVOKE_FUNC, tooMany, nullptr)));
}

TEST_F(Client, LoadsAndUnloadsManyTimesAndLeavesNothingBehind) {
    std::vector<CLSID> ids;
    for (const Class& described : creatableClasses())
        ids.push_back(idOfClass(described.progId));
    ASSERT_FALSE(ids.empty());
    const std::wstring path = registeredPath();
    CoFreeUnusedLibrariesEx(0, 0);
    constexpr std::size_t kMeasured = 30;
    std::size_t before = 0;
    for (std::size_t i = 0; i < 5 + kMeasured; ++i) {
        if (i == 5) before = blocksInUse();
        const HMODULE module = LoadLibraryW(path.c_str());
        ASSERT_TRUE(module);
        const auto canUnload = [&] { return callEntry(module, "DllCanUnloadNow"); };
        const auto useAll = [&] {
            const Apartment own;
            for (const CLSID& clsid : ids)
                use(module, clsid);
        };
        EXPECT_EQ(canUnload(), S_OK);
        useAll();
        std::thread(useAll).join();
        EXPECT_EQ(canUnload(), S_OK);
        ComPtr<IClassFactory> factory = factoryOf(module, ids.front());
        EXPECT_EQ(canUnload(), S_FALSE);
        factory->LockServer(FALSE);
        factory->LockServer(TRUE);
        factory = {};
        EXPECT_EQ(canUnload(), S_FALSE) << "one unlocking too many does not unlock what is locked later";
        factoryOf(module, ids.front())->LockServer(FALSE);
        EXPECT_EQ(canUnload(), S_OK);
        FreeLibrary(module);
    }
    // Less than one block for each time.
    EXPECT_LT(blocksInUse(), before + kMeasured);
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
