#include "automation/class_info.h"

#include <bit>

namespace tarncom32::automation {

namespace {

constexpr std::uint16_t kNone = 0xFFFF;

bool serves(MemberKind kind, Access access) {
    switch (access) {
    case Access::Method:
        return kind == MemberKind::Method;
    case Access::Get:
        return kind == MemberKind::Get;
    case Access::MethodOrGet:
        return kind == MemberKind::Method || kind == MemberKind::Get;
    case Access::Let:
        return kind == MemberKind::Let;
    case Access::Set:
        return kind == MemberKind::Set;
    }
    return false;
}

StringView plainTypeText(VariantType type) {
    switch (type) {
    case VariantType::Empty:
        return u"";
    case VariantType::Null:
        return u"Null";
    case VariantType::Integer:
        return u"Integer";
    case VariantType::Long:
        return u"Long";
    case VariantType::Single:
        return u"Single";
    case VariantType::Double:
        return u"Double";
    case VariantType::Currency:
        return u"Currency";
    case VariantType::Date:
        return u"Date";
    case VariantType::String:
        return u"String";
    case VariantType::Object:
        return u"Object";
    case VariantType::Error:
        return u"Error";
    case VariantType::Boolean:
        return u"Boolean";
    case VariantType::Variant:
        return u"Variant";
    case VariantType::Unknown:
        return u"Unknown";
    case VariantType::Decimal:
        return u"Decimal";
    case VariantType::SignedByte:
        return u"SByte";
    case VariantType::Byte:
        return u"Byte";
    case VariantType::UnsignedInteger:
        return u"UInteger";
    case VariantType::UnsignedLong:
        return u"ULong";
    case VariantType::LongLong:
        return u"LongLong";
    case VariantType::UnsignedLongLong:
        return u"ULongLong";
    case VariantType::Record:
        return u"Record";
    case VariantType::Array:
        return u"Variant()";
    }
    return u"";
}

char16_t hexDigit(unsigned value) {
    return u"0123456789ABCDEF"[value & 15];
}

void appendHex(String& out, std::uint64_t value, int digits) {
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        out.push_back(hexDigit(static_cast<unsigned>(value >> shift)));
}

} // namespace

String typeText(const Type& type) {
    String text(type.name.empty() ? plainTypeText(type.type) : type.name);
    if (type.isArray) text += u"()";
    return text;
}

String guidText(const Guid& guid) {
    String text = u"{";
    appendHex(text, guid.data1, 8);
    text += u'-';
    appendHex(text, guid.data2, 4);
    text += u'-';
    appendHex(text, guid.data3, 4);
    text += u'-';
    for (std::size_t i = 0; i < guid.data4.size(); ++i) {
        if (i == 2) text += u'-';
        appendHex(text, guid.data4[i], 2);
    }
    return text + u'}';
}

ClassInfo::ClassInfo(StringView className, StringView classHelp, Guid classId, Guid interfaceId,
                     std::vector<MemberInfo> table, Guid sourceInterfaceId, std::vector<EventInfo> eventTable)
    : name(className), help(classHelp), clsid(classId), iid(interfaceId), sourceIid(sourceInterfaceId),
      members(std::move(table)), events(std::move(eventTable)), slots_(std::bit_ceil(members.size() * 2 + 1), kNone),
      nextOfName_(members.size(), kNone) {
    for (std::size_t i = 0; i < members.size(); ++i) {
        const MemberName wanted(members[i].name);
        std::size_t slot = wanted.hash() & (slots_.size() - 1);
        while (slots_[slot] != kNone && !equalsIgnoreCase(members[slots_[slot]].name, wanted.text()))
            slot = (slot + 1) & (slots_.size() - 1);
        std::uint16_t* last = &slots_[slot];
        while (*last != kNone)
            last = &nextOfName_[*last];
        *last = static_cast<std::uint16_t>(i);
    }
}

const MemberInfo* ClassInfo::findAny(const MemberName& wanted) const {
    std::size_t slot = wanted.hash() & (slots_.size() - 1);
    for (; slots_[slot] != kNone; slot = (slot + 1) & (slots_.size() - 1))
        if (equalsIgnoreCase(members[slots_[slot]].name, wanted.text())) return &members[slots_[slot]];
    return nullptr;
}

const MemberInfo* ClassInfo::find(const MemberName& wanted, Access access) const {
    if (wanted.text().empty()) return find(kDispidValue, access);
    const MemberInfo* first = findAny(wanted);
    if (!first) return nullptr;
    for (auto i = static_cast<std::uint16_t>(first - members.data()); i != kNone; i = nextOfName_[i])
        if (serves(members[i].kind, access)) return &members[i];
    return nullptr;
}

const MemberInfo* ClassInfo::find(std::int32_t dispid, Access access) const {
    for (const MemberInfo& member : members)
        if (member.dispid == dispid && serves(member.kind, access)) return &member;
    return nullptr;
}

Error noSuchMember(const ClassInfo& info, const MemberName& name) {
    return Error(errors::NoSuchMember, String(descriptionOf(errors::NoSuchMember)) + u": " + String(info.name) + u"." +
                                           String(name.text().empty() ? StringView(u"(default)") : name.text()));
}

} // namespace tarncom32::automation
