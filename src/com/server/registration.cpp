#include "com/server/registration.h"

#include "automation/error.h"
#include "com/server/registry_key.h"

#include <algorithm>
#include <vector>

namespace tarncom32::com {

using automation::String;
using automation::StringView;

namespace {

constexpr StringView kClasses = u"Software\\Classes\\";
constexpr StringView kVersion = u"1.0";
/// The system's marshalers: of interfaces that a type library describes, and of those that are IDispatch alone.
constexpr StringView kTypeLibraryMarshaler = u"{00020424-0000-0000-C000-000000000046}";
constexpr StringView kDispatchMarshaler = u"{00020420-0000-0000-C000-000000000046}";

/// An interface of the type library, as its key names it.
struct InterfaceEntry {
    String name;
    String iid;
    StringView marshaler;
};

String textOf(REFGUID guid) {
    wchar_t text[40] = L"";
    StringFromGUID2(guid, text, 40);
    return String(viewOf(text));
}

/// The interfaces that callers hold: every dual and every dispatch interface of the library.
std::vector<InterfaceEntry> interfacesOf(ITypeLib& library) {
    std::vector<InterfaceEntry> entries;
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        TYPEKIND kind = TKIND_MAX;
        ComPtr<ITypeInfo> type;
        TYPEATTR* attributes = nullptr;
        OwnedText name;
        if (FAILED(library.GetTypeInfoType(i, &kind)) || (kind != TKIND_DISPATCH && kind != TKIND_INTERFACE) ||
            FAILED(library.GetTypeInfo(i, type.put())) || FAILED(type->GetTypeAttr(&attributes)))
            continue;
        library.GetDocumentation(static_cast<INT>(i), name.put(), nullptr, nullptr, nullptr);
        const bool hasVtable = kind == TKIND_INTERFACE || attributes->wTypeFlags & TYPEFLAG_FDUAL;
        entries.push_back({String(viewOfBstr(name.get())), textOf(attributes->guid),
                           hasVtable ? kTypeLibraryMarshaler : kDispatchMarshaler});
        type->ReleaseTypeAttr(attributes);
    }
    return entries;
}

String folderOf(const String& path) {
    return path.substr(0, path.find_last_of(u'\\'));
}

void write(HKEY hive, const String& path, REGSAM view, StringView value) {
    RegistryKey::create(hive, String(kClasses) + path, view).set(u"", value);
}

} // namespace

Registration::Registration(const Server& server, String path, ComPtr<ITypeLib> library, REGSAM view)
    : server_(server), path_(std::move(path)), library_(std::move(library)), view_(view) {}

String Registration::platformName() const {
    const bool wide = view_ == 0 ? sizeof(void*) == 8 : view_ == KEY_WOW64_64KEY;
    return wide ? u"win64" : u"win32";
}

void Registration::add() const {
    // Whether the machine's entries may be written shows only when one is.
    const HKEY hive = isWritable(HKEY_LOCAL_MACHINE) ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    try {
        addTo(hive);
    } catch (const automation::Error&) {
        removeFrom(hive);
        throw;
    }
}

void Registration::remove() const {
    for (const HKEY hive : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        if (isWritable(hive))
            removeFrom(hive);
        else if (isIn(hive))
            throw automation::Error::fromHresult(static_cast<std::int32_t>(E_ACCESSDENIED));
    }
}

bool Registration::isWritable(HKEY hive) const {
    return bool(RegistryKey::open(hive, String(kClasses) + u"CLSID", KEY_READ | KEY_WRITE | view_));
}

bool Registration::isIn(HKEY hive) const {
    return std::ranges::any_of(server_.classes, [&](const ServerClass& described) {
        const String clsid = automation::guidText(described.info->clsid);
        return !described.progId.empty() &&
               RegistryKey::open(hive, String(kClasses) + u"CLSID\\" + clsid, KEY_READ | view_);
    });
}

void Registration::addTo(HKEY hive) const {
    const String library = automation::guidText(server_.library);
    for (const ServerClass& described : server_.classes) {
        if (described.progId.empty()) continue;
        const String& progId = described.progId;
        const String versioned = progId + u".1";
        const StringView help = described.info->help;
        const String clsid = automation::guidText(described.info->clsid);

        write(hive, progId, view_, help);
        write(hive, progId + u"\\CLSID", view_, clsid);
        write(hive, progId + u"\\CurVer", view_, versioned);
        write(hive, versioned, view_, help);
        write(hive, versioned + u"\\CLSID", view_, clsid);

        const String key = u"CLSID\\" + clsid;
        write(hive, key, view_, help);
        const String inproc = key + u"\\InprocServer32";
        write(hive, inproc, view_, path_);
        RegistryKey::create(hive, String(kClasses) + inproc, view_).set(u"ThreadingModel", u"Apartment");
        write(hive, key + u"\\ProgID", view_, versioned);
        write(hive, key + u"\\VersionIndependentProgID", view_, progId);
        write(hive, key + u"\\TypeLib", view_, library);
        write(hive, key + u"\\Version", view_, kVersion);
        write(hive, key + u"\\Programmable", view_, u"");
    }

    const String version = u"TypeLib\\" + library + u"\\" + String(kVersion);
    write(hive, version, view_, server_.help);
    write(hive, version + u"\\0\\" + platformName(), view_, path_);
    write(hive, version + u"\\FLAGS", view_, u"0");
    write(hive, version + u"\\HELPDIR", view_, folderOf(path_));

    for (const InterfaceEntry& entry : interfacesOf(*library_.get())) {
        const String key = u"Interface\\" + entry.iid;
        write(hive, key, view_, entry.name);
        write(hive, key + u"\\ProxyStubClsid32", view_, entry.marshaler);
        write(hive, key + u"\\TypeLib", view_, library);
        RegistryKey::create(hive, String(kClasses) + key + u"\\TypeLib", view_).set(u"Version", kVersion);
    }
}

void Registration::removeFrom(HKEY hive) const {
    const String classes(kClasses);
    for (const ServerClass& described : server_.classes) {
        if (described.progId.empty()) continue;
        const String clsid = classes + u"CLSID\\" + automation::guidText(described.info->clsid);
        removeKey(hive, clsid, view_);
        const bool otherRemains = RegistryKey::open(hive, clsid, KEY_READ | KEY_WOW64_32KEY) ||
                                  RegistryKey::open(hive, clsid, KEY_READ | KEY_WOW64_64KEY);
        if (otherRemains) continue;
        // Shared by both bitnesses on all but old systems, where each has its own.
        for (const REGSAM view : {view_, REGSAM{KEY_WOW64_32KEY}, REGSAM{KEY_WOW64_64KEY}}) {
            removeKey(hive, classes + described.progId, view);
            removeKey(hive, classes + described.progId + u".1", view);
        }
    }
    for (const InterfaceEntry& entry : interfacesOf(*library_.get()))
        removeKey(hive, classes + u"Interface\\" + entry.iid, view_);

    const String library = classes + u"TypeLib\\" + automation::guidText(server_.library);
    const String version = library + u"\\" + String(kVersion);
    const String locale = version + u"\\0";
    const auto isEmpty = [&](const String& path) {
        const auto key = RegistryKey::open(hive, path, KEY_READ | view_);
        return !key || !key.hasSubkeys();
    };
    removeKey(hive, locale + u"\\" + platformName(), view_);
    // The other bitness and other versions have their entries beside ours.
    if (isEmpty(locale)) removeKey(hive, version, view_);
    if (isEmpty(library)) removeKey(hive, library, view_);
}

} // namespace tarncom32::com
