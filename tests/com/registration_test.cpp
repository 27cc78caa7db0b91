#include "com/server/registration.h"

#include "com/bridge/failure.h"
#include "com/registry_root.h"
#include "probe/probe.h"

#include <gtest/gtest.h>

#include <sddl.h>

namespace tarncom32::com::testing {

namespace {

/// A class that is registered for this alone.
const ClassInfo& trial() {
    static const ClassInfo info(u"Probe", u"Takes and gives values.", "6e0c6a52-07c5-4f0e-9f3a-5a3d2a0f9c11"_guid,
                                "6e0c6a52-07c5-4f0e-9f3a-5a3d2a0f9c12"_guid, {});
    return info;
}

constexpr Guid kInterface = "1d9b3e6e-24a2-43ac-8a5d-0b9f83a1d111"_guid;
constexpr Guid kEvents = "1d9b3e6e-24a2-43ac-8a5d-0b9f83a1d113"_guid;
constexpr Guid kLibrary = "1d9b3e6e-24a2-43ac-8a5d-0b9f83a1d112"_guid;

const String kDllPath = u"C:\\" + String(300, u'\u00e4') + u"\\\u4e2d.dll";

/// A type library in memory with a dual interface and one for events.
ComPtr<ITypeLib> makeTypeLibrary() {
    ComPtr<ICreateTypeLib2> library;
    EXPECT_EQ(CreateTypeLib2(sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32, L"probe.tlb", library.put()), S_OK);
    for (const bool dual : {true, false}) {
        ComPtr<ICreateTypeInfo> type;
        wchar_t name[] = L"__Probe";
        EXPECT_EQ(library->CreateTypeInfo(dual ? name + 1 : name, TKIND_DISPATCH, type.put()), S_OK);
        EXPECT_EQ(type->SetGuid(toGuid(dual ? kInterface : kEvents)), S_OK);
        EXPECT_EQ(type->SetTypeFlags(dual ? TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION : 0), S_OK);
    }
    return query<ITypeLib>(library.get(), IID_ITypeLib);
}

class RegistrationTest : public ::testing::Test {
protected:
    static Registration of(REGSAM view) { return Registration(server_, kDllPath, makeTypeLibrary(), view); }

    void TearDown() override {
        of(KEY_WOW64_32KEY).remove();
        of(KEY_WOW64_64KEY).remove();
    }

    static String value(const String& path, REGSAM view = 0, const wchar_t* name = nullptr) {
        return String(viewOf(valueAt(HKEY_CLASSES_ROOT, wide(path), view, name).c_str()));
    }
    static bool has(const PrivateRoot& root, const String& path) { return root.value(wide(path)) != L"-"; }

    static String clsidKey() { return u"CLSID\\" + guidText(trial().clsid); }
    static String interfaceKey() { return u"Interface\\" + guidText(kInterface); }
    static String eventsKey() { return u"Interface\\" + guidText(kEvents); }
    static String libraryKey() { return u"TypeLib\\" + guidText(kLibrary); }
    /// Where the entries of each kind stand.
    static std::vector<String> roots() {
        return {u"TarnTrial.Probe", u"TarnTrial.Probe.1", clsidKey(), interfaceKey(), eventsKey(), libraryKey()};
    }

    static inline const Server server_{u"TarnTrial", u"Probe library", kLibrary, {{&trial(), u"TarnTrial.Probe", [] {
                                                                                       return ObjectRef(make<Probe>());
                                                                                   }}}};
};

TEST_F(RegistrationTest, WritesWhatComLooksForAndRemovesAllOfIt) {
    of(0).add();
    const String clsid = guidText(trial().clsid);
    const struct {
        String path;
        String value;
    } entries[] = {
        {u"TarnTrial.Probe\\CLSID", clsid},
        {u"TarnTrial.Probe\\CurVer", u"TarnTrial.Probe.1"},
        {u"TarnTrial.Probe.1\\CLSID", clsid},
        {clsidKey(), u"Takes and gives values."},
        {clsidKey() + u"\\InprocServer32", kDllPath},
        {clsidKey() + u"\\ProgID", u"TarnTrial.Probe.1"},
        {clsidKey() + u"\\VersionIndependentProgID", u"TarnTrial.Probe"},
        {clsidKey() + u"\\TypeLib", guidText(kLibrary)},
        {clsidKey() + u"\\Programmable", u""},
        {interfaceKey(), u"_Probe"},
        {interfaceKey() + u"\\ProxyStubClsid32", u"{00020424-0000-0000-C000-000000000046}"},
        {interfaceKey() + u"\\TypeLib", guidText(kLibrary)},
        {eventsKey() + u"\\ProxyStubClsid32", u"{00020420-0000-0000-C000-000000000046}"},
        {libraryKey() + u"\\1.0", u"Probe library"},
        {libraryKey() + (sizeof(void*) == 8 ? u"\\1.0\\0\\win64" : u"\\1.0\\0\\win32"), kDllPath},
    };
    for (const auto& entry : entries)
        EXPECT_EQ(value(entry.path), entry.value) << toUtf8(entry.path);
    EXPECT_EQ(value(clsidKey() + u"\\InprocServer32", 0, L"ThreadingModel"), u"Apartment");
    of(0).remove();
    for (const String& root : roots())
        EXPECT_EQ(value(root), u"-") << toUtf8(root);
    EXPECT_NO_THROW(of(0).remove()) << "nothing is left to remove";
}

TEST_F(RegistrationTest, GoesToTheUserWhereTheMachineIsClosed) {
    const PrivateRoot machine(HKEY_LOCAL_MACHINE, L"tarncom32 test machine");
    const PrivateRoot user(HKEY_CURRENT_USER, L"tarncom32 test user");
    const auto allow = [&](const wchar_t* rights) {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor, nullptr);
        EXPECT_EQ(RegSetKeySecurity(machine.classes(), DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
        LocalFree(descriptor);
    };
    allow(L"D:P(A;;KR;;;WD)"); // everybody may read the classes, nobody may write
    EXPECT_EQ(machine.begin(), ERROR_SUCCESS);
    EXPECT_EQ(user.begin(), ERROR_SUCCESS);
    of(0).add();
    for (const String& root : roots()) {
        EXPECT_FALSE(has(machine, root)) << toUtf8(root);
        EXPECT_TRUE(has(user, root)) << toUtf8(root);
    }
    of(0).remove();
    for (const String& root : roots())
        EXPECT_FALSE(has(user, root)) << toUtf8(root);
    constexpr const wchar_t* kAll = L"D:(A;;KA;;;WD)";
    allow(kAll);
    of(0).add();
    allow(L"D:P(A;;KR;;;WD)");
    EXPECT_THROW(of(0).remove(), Error) << "the machine's entries must stay";
    allow(kAll); // so that the key can go again
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
        EXPECT_EQ(value(u"TarnTrial.Probe\\CLSID"), guidText(trial().clsid));
        EXPECT_EQ(value(libraryKey() + (wideFirst ? u"\\1.0\\0\\win32" : u"\\1.0\\0\\win64")), kDllPath);
        of(stays).remove();
        EXPECT_EQ(value(u"TarnTrial.Probe"), u"-");
        EXPECT_EQ(value(libraryKey()), u"-");
    }
}

#endif

} // namespace

} // namespace tarncom32::com::testing
