#include "com/client/library_under_test.h"
#include "com/registry_root.h"

#include <gtest/gtest.h>

namespace client {

namespace {

/// A copy of the registered DLL in nested folders of one name, removed with them.
class Copy {
public:
    Copy(const std::wstring& folder, int depth) {
        wchar_t temporary[MAX_PATH] = L"";
        GetTempPathW(MAX_PATH, temporary);
        std::wstring path = temporary + (L"tarncom32 copy " + std::to_wstring(GetCurrentProcessId()));
        for (int i = 0; i <= depth; ++i) {
            EXPECT_TRUE(CreateDirectoryW(whole(path).c_str(), nullptr)) << GetLastError();
            folders_.push_back(path);
            path += L"\\" + folder;
        }
        EXPECT_TRUE(CopyFileW(registeredPath().c_str(), whole(this->path()).c_str(), FALSE)) << GetLastError();
    }
    Copy(const Copy&) = delete;
    ~Copy() {
        DeleteFileW(whole(path()).c_str());
        for (; !folders_.empty(); folders_.pop_back())
            RemoveDirectoryW(whole(folders_.back()).c_str());
    }
    std::wstring path() const { return folders_.back() + L"\\TarnCom32.dll"; }

    /// The form in which paths have no longest length.
    static std::wstring whole(const std::wstring& path) { return L"\\\\?\\" + path; }

private:
    std::vector<std::wstring> folders_;
};

TEST(DllPath, MayBeLongAndOfAnyLetters) {
    const Apartment apartment;
    const struct {
        const char* name;
        std::wstring folder;
        int depth;
    } rows[] = {
        {"letters of no 8-bit code page", L"\u00dcbung \u4e2d\u6587 \u0416", 1},
        {"longer than 260 characters", std::wstring(80, L'l'), 3},
        {"both", std::wstring(60, L'\u00e4'), 4},
    };
    const CLSID clsid = idOfClass(L"TarnCom32.StringFunctions");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Copy copy(row.folder, row.depth);
        const HMODULE module = LoadLibraryW(Copy::whole(copy.path()).c_str());
        ASSERT_TRUE(module) << GetLastError();
        {
            const ComPtr<IClassFactory> factory = factoryOf(module, clsid);
            ASSERT_TRUE(factory);
            ComPtr<IDispatch> created;
            ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, created.putVoid()), S_OK);
            // The type library inside the DLL is found by the DLL's own path.
            ComPtr<ITypeInfo> type;
            EXPECT_EQ(created->GetTypeInfo(0, 0, type.put()), S_OK);

            const tarncom32::com::testing::PrivateRoot machine(HKEY_LOCAL_MACHINE, L"tarncom32 private machine");
            EXPECT_EQ(machine.begin(), ERROR_SUCCESS);
            EXPECT_EQ(callEntry(module, "DllRegisterServer"), S_OK);
            const std::wstring registered = machine.value(serverKey(clsid));
            EXPECT_TRUE(registered.ends_with(copy.path())) << registered.size() << " characters are registered";
            EXPECT_EQ(callEntry(module, "DllUnregisterServer"), S_OK);
            EXPECT_EQ(machine.value(serverKey(clsid)), L"-");
        }
        FreeLibrary(module);
    }
}

} // namespace

} // namespace client
