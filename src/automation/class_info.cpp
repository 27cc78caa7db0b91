#include "automation/class_info.h"

#include "automation/members.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

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

/// Whether compiled callers may take one line of a C++ member for the other.
bool callsAlike(const MemberInfo& left, const MemberInfo& right) {
    return left.failureStyle == right.failureStyle &&
           std::ranges::equal(left.parameters, right.parameters,
                              [](const ParameterInfo& one, const ParameterInfo& two) {
                                  return one.direction == two.direction && one.optional == two.optional &&
                                         one.defaultValue == two.defaultValue;
                              });
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
        const MemberInfo* other = members[i].published ? *members[i].published : nullptr;
        if (other && !callsAlike(*other, members[i]))
            throw std::logic_error(toUtf8(name) + "." + toUtf8(members[i].name) +
                                   ": its C++ member has a line already, in which its parameters are others");
        if (members[i].published && !other) *members[i].published = &members[i];
    }
}

ClassInfo::~ClassInfo() {
    delete exportTable.load();
    for (const MemberInfo& member : members)
        if (member.published && *member.published == &member) *member.published = nullptr;
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

namespace detail {

void completeParameters(StringView name, std::vector<ParameterInfo>& parameters, std::span<const Type> types,
                        std::span<const bool> writable, std::uint32_t readByReference) {
    if (types.size() != parameters.size())
        throw std::logic_error(toUtf8(name) + ": the table and the C++ side differ in the number of parameters");
    for (std::size_t i = 0; i < types.size(); ++i) {
        parameters[i].type = types[i];
        parameters[i].readByReference = (readByReference >> i & 1) != 0;
        if (!types[i].isArray && parameters[i].isByReference() != writable[i])
            throw std::logic_error(toUtf8(name) + ": direction and C++ type of a parameter do not agree");
    }
}

Variant invokeByName(Object& self, const ClassInfo& info, const MemberName& name, Access access,
                     std::span<Variant> arguments) {
    const MemberInfo* member = info.find(name, access);
    if (!member || !member->invoke) throw noSuchMember(info, name);
    if (arguments.size() > member->parameters.size()) throw Error(errors::WrongArgumentCount);
    std::array<LateArgument, kMostParameters> late;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        late[i] = LateArgument(arguments[i]);
    return member->invoke(self, *member, {late.data(), arguments.size()});
}

} // namespace detail

} // namespace tarncom32::automation
