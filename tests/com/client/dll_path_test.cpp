#include "com/client/library_under_test.h"

#include <gtest/gtest.h>

namespace client {

namespace {

using Entry = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using Register = HRESULT(STDAPICALLTYPE*)();

template <class Function>
Function entryOf(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

/// A copy of the registered DLL in nested folders of one name, removed with them.
class Copy {
public:
    Copy(const std::wstring& folder, int depth) {
        wchar_t temporary[MAX_PATH] = L"";
        GetTempPathW(MAX_PATH, temporary);
        path_ = temporary + (L"tarncom32 copy " + std::to_wstring(GetCurrentProcessId()));
        for (int i = 0; i <= depth; ++i) {
            EXPECT_TRUE(CreateDirectoryW(whole(path_).c_str(), nullptr)) << GetLastError();
            folders_.push_back(path_);
            path_ += L"\\" + folder;
        }
        path_ = folders_.back() + L"\\TarnCom32.dll";
        EXPECT_TRUE(CopyFileW(registeredPath().c_str(), whole(path_).c_str(), FALSE)) << GetLastError();
    }
    Copy(const Copy&) = delete;
    ~Copy() {
        DeleteFileW(whole(path_).c_str());
        while (!folders_.empty()) {
            RemoveDirectoryW(whole(folders_.back()).c_str());
            folders_.pop_back();
        }
    }
    const std::wstring& path() const { return path_; }

    /// The form in which paths have no longest length.
    static std::wstring whole(const std::wstring& path) { return L"\\\\?\\" + path; }

private:
    std::vector<std::wstring> folders_;
    std::wstring path_;
};

/// HKEY_LOCAL_MACHINE is another key for this process, as long as this lives.
class PrivateMachineHive {
public:
    PrivateMachineHive() {
        RegCreateKeyExW(HKEY_CURRENT_USER, kName, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr);
        HKEY classes = nullptr;
        RegCreateKeyExW(key_, L"Software\\Classes\\CLSID", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &classes, nullptr);
        RegCloseKey(classes);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, key_);
    }
    PrivateMachineHive(const PrivateMachineHive&) = delete;
    ~PrivateMachineHive() {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegDeleteTreeW(key_, nullptr);
        RegCloseKey(key_);
        RegDeleteKeyW(HKEY_CURRENT_USER, kName);
    }
    std::wstring value(const std::wstring& path) const {
        wchar_t text[2048] = L"";
        DWORD size = sizeof text;
        RegGetValueW(key_, (L"Software\\Classes\\" + path).c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size);
        return text;
    }

private:
    static constexpr const wchar_t* kName = L"Software\\tarncom32 private machine";
    HKEY key_ = nullptr;
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
    CLSID clsid{};
    ASSERT_EQ(CLSIDFromProgID(L"TarnCom32.StringFunctions", &clsid), S_OK);
    wchar_t clsidText[40] = L"";
    StringFromGUID2(clsid, clsidText, 40);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Copy copy(row.folder, row.depth);
        const HMODULE module = LoadLibraryW(Copy::whole(copy.path()).c_str());
        ASSERT_TRUE(module) << GetLastError();
        IClassFactory* made = nullptr;
        ASSERT_EQ(
            entryOf<Entry>(module, "DllGetClassObject")(clsid, IID_IClassFactory, reinterpret_cast<void**>(&made)),
            S_OK);
        IDispatch* created = nullptr;
        ASSERT_EQ(made->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&created)), S_OK);
        made->Release();
        // The type library inside the DLL is found by the DLL's own path.
        ITypeInfo* type = nullptr;
        EXPECT_EQ(created->GetTypeInfo(0, 0, &type), S_OK);
        if (type) type->Release();
        created->Release();
        {
            const PrivateMachineHive machine;
            const auto key = L"CLSID\\" + std::wstring(clsidText) + L"\\InprocServer32";
            EXPECT_EQ(entryOf<Register>(module, "DllRegisterServer")(), S_OK);
            const std::wstring registered = machine.value(key);
            EXPECT_TRUE(registered.ends_with(copy.path())) << registered.size() << " characters are registered";
            EXPECT_EQ(entryOf<Register>(module, "DllUnregisterServer")(), S_OK);
            EXPECT_EQ(machine.value(key), L"");
        }
        FreeLibrary(module);
    }
}

} // namespace

} // namespace client
