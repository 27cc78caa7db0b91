#include "com/server/registration.h"

#include "com/bridge/failure.h"
#include "com/probe.h"
#include "com/server/registry_key.h"

#include <gtest/gtest.h>

#include <sddl.h>

namespace tarncom32::com::testing {

namespace {

constexpr Guid kInterface = "1d9b3e6e-24a2-43ac-8a5d-0b9f83a1d111"_guid;
constexpr Guid kLibrary = "1d9b3e6e-24a2-43ac-8a5d-0b9f83a1d112"_guid;

const String kDllPath = u"C:\\" + String(300, u'\u00e4') + u"\\\u4e2d.dll";

/// A type library in memory with one interface.
ComPtr<ITypeLib> makeTypeLibrary() {
    ComPtr<ICreateTypeLib2> library;
    EXPECT_EQ(CreateTypeLib2(sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32, L"probe.tlb", library.put()), S_OK);
    ComPtr<ICreateTypeInfo> type;
    wchar_t name[] = L"_Probe";
    EXPECT_EQ(library->CreateTypeInfo(name, TKIND_DISPATCH, type.put()), S_OK);
    EXPECT_EQ(type->SetGuid(toGuid(kInterface)), S_OK);
    return query<ITypeLib>(library.get(), IID_ITypeLib);
}

class RegistrationTest : public ::testing::Test {
protected:
    static Registration of(REGSAM view) { return Registration(server_, kDllPath, makeTypeLibrary(), view); }

    void TearDown() override {
        of(KEY_WOW64_32KEY).remove();
        of(KEY_WOW64_64KEY).remove();
    }

    /// The default value of a class key; "-" when the key is not there.
    static String value(const String& path, REGSAM view = 0, const wchar_t* name = nullptr) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CLASSES_ROOT, wide(path), 0, KEY_READ | view, &key) != ERROR_SUCCESS) return u"-";
        wchar_t text[1024] = L"";
        DWORD size = sizeof text;
        RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
        RegCloseKey(key);
        return String(viewOf(text));
    }

    static String clsidKey() { return u"CLSID\\" + guidText(Probe::describe().clsid); }
    static String interfaceKey() { return u"Interface\\" + guidText(kInterface); }
    static String libraryKey() { return u"TypeLib\\" + guidText(kLibrary); }

    static inline const Server server_{
        u"TarnProbe", u"Probe library", kLibrary, {{&Probe::describe(), u"TarnProbe.Probe", [] {
                                                        return ObjectRef(make<Probe>());
                                                    }}}};
};

TEST_F(RegistrationTest, WritesWhatComLooksFor) {
    of(0).add();
    const String clsid = guidText(Probe::describe().clsid);
    const struct {
        String path;
        String value;
    } entries[] = {
        {u"TarnProbe.Probe\\CLSID", clsid},
        {u"TarnProbe.Probe\\CurVer", u"TarnProbe.Probe.1"},
        {u"TarnProbe.Probe.1\\CLSID", clsid},
        {clsidKey(), u"Takes and gives values."},
        {clsidKey() + u"\\InprocServer32", kDllPath},
        {clsidKey() + u"\\ProgID", u"TarnProbe.Probe.1"},
        {clsidKey() + u"\\VersionIndependentProgID", u"TarnProbe.Probe"},
        {clsidKey() + u"\\TypeLib", guidText(kLibrary)},
        {clsidKey() + u"\\Programmable", u""},
        {interfaceKey(), u"_Probe"},
        {interfaceKey() + u"\\ProxyStubClsid32", u"{00020424-0000-0000-C000-000000000046}"},
        {interfaceKey() + u"\\TypeLib", guidText(kLibrary)},
        {libraryKey() + u"\\1.0", u"Probe library"},
        {libraryKey() + (sizeof(void*) == 8 ? u"\\1.0\\0\\win64" : u"\\1.0\\0\\win32"), kDllPath},
    };
    for (const auto& entry : entries)
        EXPECT_EQ(value(entry.path), entry.value) << toUtf8(entry.path);
    EXPECT_EQ(value(clsidKey() + u"\\InprocServer32", 0, L"ThreadingModel"), u"Apartment");
    of(0).remove();
    for (const String& root :
         {String(u"TarnProbe.Probe"), String(u"TarnProbe.Probe.1"), clsidKey(), interfaceKey(), libraryKey()})
        EXPECT_EQ(value(root), u"-") << toUtf8(root);
    EXPECT_NO_THROW(of(0).remove()) << "nothing is left to remove";
}

/// Another key in place of one of the registry's roots, for this process and as long as this lives.
class PrivateRoot {
public:
    PrivateRoot(HKEY root, const wchar_t* name) : root_(root), name_(std::wstring(L"Software\\") + name) {
        RegCreateKeyExW(HKEY_CURRENT_USER, name_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr);
    }
    PrivateRoot(const PrivateRoot&) = delete;
    ~PrivateRoot() {
        RegOverridePredefKey(root_, nullptr);
        RegDeleteTreeW(key_, nullptr);
        RegCloseKey(key_);
        RegDeleteKeyW(HKEY_CURRENT_USER, name_.c_str());
    }
    void begin() const { EXPECT_EQ(RegOverridePredefKey(root_, key_), ERROR_SUCCESS); }
    HKEY key() const { return key_; }
    /// Whether there is such a key below the classes.
    bool has(const String& path) const {
        HKEY found = nullptr;
        if (RegOpenKeyExW(key_, wide(u"Software\\Classes\\" + path), 0, KEY_READ, &found) != ERROR_SUCCESS)
            return false;
        RegCloseKey(found);
        return true;
    }

private:
    HKEY root_;
    std::wstring name_;
    HKEY key_ = nullptr;
};

TEST_F(RegistrationTest, GoesToTheUserWhereTheMachineIsClosed) {
    const PrivateRoot machine(HKEY_LOCAL_MACHINE, L"tarncom32 test machine");
    const PrivateRoot user(HKEY_CURRENT_USER, L"tarncom32 test user");
    HKEY classes = nullptr;
    ASSERT_EQ(RegCreateKeyExW(machine.key(), L"Software\\Classes\\CLSID", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              &classes, nullptr),
              ERROR_SUCCESS);
    // Everybody may read the classes, nobody may write.
    PSECURITY_DESCRIPTOR readOnly = nullptr;
    ASSERT_TRUE(
        ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;KR;;;WD)", SDDL_REVISION_1, &readOnly, nullptr));
    EXPECT_EQ(RegSetKeySecurity(classes, DACL_SECURITY_INFORMATION, readOnly), ERROR_SUCCESS);
    LocalFree(readOnly);

    machine.begin();
    user.begin();
    of(0).add();
    for (const String& root : {String(u"TarnProbe.Probe"), clsidKey(), interfaceKey(), libraryKey()}) {
        EXPECT_FALSE(machine.has(root)) << toUtf8(root);
        EXPECT_TRUE(user.has(root)) << toUtf8(root);
    }
    of(0).remove();
    for (const String& root : {String(u"TarnProbe.Probe"), clsidKey(), interfaceKey(), libraryKey()})
        EXPECT_FALSE(user.has(root)) << toUtf8(root);

    // So that the key can go again.
    PSECURITY_DESCRIPTOR open = nullptr;
    ASSERT_TRUE(
        ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:(A;;KA;;;WD)", SDDL_REVISION_1, &open, nullptr));
    RegSetKeySecurity(classes, DACL_SECURITY_INFORMATION, open);
    LocalFree(open);
    RegCloseKey(classes);
}

#ifdef _WIN64 // The 32-bit programs run on a system that has no other bitness.
TEST_F(RegistrationTest, LeavesTheOtherBitnessWhole) {
    for (const bool wideFirst : {true, false}) {
        const REGSAM gone = wideFirst ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
        const REGSAM stays = wideFirst ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
        of(KEY_WOW64_32KEY).add();
        of(KEY_WOW64_64KEY).add();
        of(gone).remove();
        EXPECT_EQ(value(clsidKey(), gone), u"-");
        EXPECT_EQ(value(interfaceKey(), gone), u"-");
        EXPECT_EQ(value(libraryKey() + (wideFirst ? u"\\1.0\\0\\win64" : u"\\1.0\\0\\win32")), u"-");
        EXPECT_EQ(value(clsidKey() + u"\\InprocServer32", stays), kDllPath);
        EXPECT_EQ(value(interfaceKey(), stays), u"_Probe");
        EXPECT_EQ(value(u"TarnProbe.Probe\\CLSID"), guidText(Probe::describe().clsid));
        EXPECT_EQ(value(libraryKey() + (wideFirst ? u"\\1.0\\0\\win32" : u"\\1.0\\0\\win64")), kDllPath);
        of(stays).remove();
        EXPECT_EQ(value(u"TarnProbe.Probe"), u"-");
        EXPECT_EQ(value(libraryKey()), u"-");
    }
}

#endif

} // namespace

} // namespace tarncom32::com::testing
