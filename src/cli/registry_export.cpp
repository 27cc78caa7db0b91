#include "cli/registry_export.h"

#include "cli/registry_value_text.h"

#include <cstdio>

namespace tarncom32::cli {

namespace {

namespace type = platform::registry_type;
using automation::String;
using automation::StringView;

/// The registry tools break a row of bytes before its line gets longer.
constexpr std::size_t kLineLength = 78;

class Exporter {
public:
    Exporter(const platform::CodePage& codePage, platform::Registry& registry, std::int32_t root,
             const std::function<void(std::string_view)>& write)
        : codePage_(codePage), registry_(registry), root_(root), write_(write) {}

    void line(StringView text = {}) {
        std::string bytes = utf16(text);
        bytes += std::string("\r\0\n\0", 4);
        write_(bytes);
    }

    bool key(const std::string& path, const String& name) {
        const auto key = registry_.open(root_, path, platform::RegistryAccess::Read);
        if (!key) return false;
        line();
        line(u"[" + name + u"]");
        platform::RegistryValue value;
        for (std::uint32_t i = 0; key->valueAt(i, kAll, kAll, value) == platform::RegistryRead::Done; ++i)
            line((value.name.empty() ? String(u"@") : quoted(codePage_.decode(value.name))) + u"=" + data(value));
        std::string subkey;
        for (std::uint32_t i = 0; key->subkeyAt(i, subkey); ++i)
            this->key(path.empty() ? subkey : path + "\\" + subkey, name + u"\\" + codePage_.decode(subkey));
        return true;
    }

    static std::string utf16(StringView text) {
        std::string bytes;
        for (const char16_t unit : text) {
            bytes.push_back(static_cast<char>(unit & 0xFF));
            bytes.push_back(static_cast<char>(unit >> 8));
        }
        return bytes;
    }

private:
    static String quoted(StringView text) {
        String result = u"\"";
        for (const char16_t c : text) {
            if (c == u'"' || c == u'\\') result += u'\\';
            result += c;
        }
        return result + u'"';
    }

    String data(const platform::RegistryValue& value) const {
        const String text = codePage_.decode(value.bytes);
        // Between quotes a text ends at its end: what has its NUL elsewhere, or lines, is written as bytes.
        const bool plain = text.ends_with(u'\0') && text.find_first_of(StringView(u"\0\r\n", 3)) == text.size() - 1;
        if (value.type == type::kString && plain) return quoted(StringView(text).substr(0, text.size() - 1));
        if (value.type == type::kDword && value.bytes.size() == 4) return hexadecimal(u"dword:", *numberOf(value), 8);
        const bool isText =
            value.type == type::kString || value.type == type::kExpandString || value.type == type::kMultiString;
        const String start = value.type == type::kBinary ? u"hex:" : hexadecimal(u"hex(", value.type, 1) + u"):";
        return start + row(isText ? utf16(text) : value.bytes, value.name.size() + 3 + start.size());
    }

    static String hexadecimal(StringView start, std::uint64_t number, int digits) {
        char text[20];
        const int length = std::snprintf(text, sizeof text, "%0*llx", digits, static_cast<unsigned long long>(number));
        return String(start) + String(text, text + length);
    }

    /// The bytes, broken into lines; `column` is where the first one stands.
    static String row(std::string_view bytes, std::size_t column) {
        String text;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const bool last = i + 1 == bytes.size();
            if (column + 4 > kLineLength) {
                text += u"\\\r\n  ";
                column = 2;
            }
            text += hexadecimal({}, static_cast<unsigned char>(bytes[i]), 2);
            if (!last) text += u',';
            column += 3;
        }
        return text;
    }

    const platform::CodePage& codePage_;
    platform::Registry& registry_;
    std::int32_t root_;
    const std::function<void(std::string_view)>& write_;
};

} // namespace

bool exportKey(const platform::CodePage& codePage, platform::Registry& registry, std::int32_t root,
               const std::string& path, const std::string& name, const std::function<void(std::string_view)>& write) {
    if (!registry.open(root, path, platform::RegistryAccess::Read)) return false;
    Exporter exporter(codePage, registry, root, write);
    write(Exporter::utf16(u"\uFEFF"));
    exporter.line(u"Windows Registry Editor Version 5.00");
    exporter.key(path, automation::fromUtf8(name));
    exporter.line();
    return true;
}

} // namespace tarncom32::cli
